#include "csvheader.h"
#include "obdcsv.h"
#include "testfolder.h"
#include "testmain.h"

using namespace module;

/** Exports of logging apps, in the shapes they come in. */
class tst_ObdCsv : public QObject
{
    Q_OBJECT
private slots:
    void headings_data();
    void headings();
    void times_data();
    void times();
    void values_data();
    void values();
    void raggedRows_data();
    void raggedRows();
    void unusableFiles_data();
    void unusableFiles();
    void drivesByTheirTimes_data();
    void drivesByTheirTimes();
    void rowsOfOneSecondShareIt();
    void damagedEndPlaysTheGoodPart();
    void hugeLineIsPassedOver();

private:
    QString write(const QByteArray &content) { return m_folder.write("drive.csv", content); }
    SampleLog read(const QByteArray &content)
    {
        QString error;
        const auto log = readObdCsv(write(content), &error);
        if (!log)
            qFatal("%s", qPrintable(error));
        return *log;
    }

    TestFolder m_folder;
};

void tst_ObdCsv::headings_data()
{
    QTest::addColumn<QString>("heading");
    QTest::addColumn<int>("quantity"); // -1 time, -2 run time, Count for an ignored column
    QTest::addColumn<int>("unit");
    const auto row = [](const char *heading, Quantity quantity,
                        CsvColumn::Unit unit = CsvColumn::Metric) {
        QTest::newRow(heading) << QString::fromUtf8(heading) << int(quantity) << int(unit);
    };
    row("ENGINE_RPM ()", Quantity::EngineSpeed);
    row("Engine RPM(rpm)", Quantity::EngineSpeed);
    row("rpm", Quantity::EngineSpeed);
    row(" Engine Speed [RPM]", Quantity::EngineSpeed);
    row("Engine coolant temperature (°C)", Quantity::CoolantTemperature);
    row("COOLANT_TEMPERATURE ()", Quantity::CoolantTemperature);
    row("Engine Coolant Temp(°F)", Quantity::CoolantTemperature, CsvColumn::Fahrenheit);
    row("Speed (OBD)(mph)", Quantity::VehicleSpeed, CsvColumn::MilesPerHour);
    row("Vehicle speed (km/h)", Quantity::VehicleSpeed);
    row("Voltage (Control Module)(V)", Quantity::Voltage);
    row("CONTROL_MODULE_VOLTAGE ()", Quantity::Voltage);
    row("Intake-Air-Temperature(degF)", Quantity::IntakeTemperature, CsvColumn::Fahrenheit);
    row("Calculated engine load value (%)", Quantity::EngineLoad);
    row("Transmission Temperature(°C)", Quantity::TransmissionTemperature);
    row("Engine Oil Temperature (°C)", Quantity::OilTemperature);
    row("Ambient air temp(°C)", Quantity::AmbientTemperature);
    row("Longitude", Quantity::Count);
    row("Fuel trim bank 1 (%)", Quantity::Count);
    row("", Quantity::Count);
    QTest::newRow("time") << "Time (sec)" << -1 << int(CsvColumn::Metric);
    QTest::newRow("time in ms") << "Timestamp (ms)" << -1 << int(CsvColumn::Milliseconds);
    QTest::newRow("device time") << "Device Time" << -1 << int(CsvColumn::Metric);
    QTest::newRow("run time, misspelt") << "ENGINE_RUN_TINE ()" << -2 << int(CsvColumn::Metric);
    QTest::newRow("run time") << "Run time since engine start(s)" << -2 << int(CsvColumn::Metric);
}

void tst_ObdCsv::headings()
{
    QFETCH(QString, heading);
    QFETCH(int, quantity);
    QFETCH(int, unit);
    const CsvColumn column = csvColumn(heading);
    const int seen = column.role == CsvColumn::Time      ? -1
                     : column.role == CsvColumn::RunTime ? -2
                                                         : int(column.quantity);
    QCOMPARE(seen, quantity);
    if (column.role != CsvColumn::Ignored)
        QCOMPARE(int(column.unit), unit);
}

void tst_ObdCsv::times_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<double>("betweenMs"); // -1: not a time
    QTest::newRow("seconds") << "0.0"
                             << "1.25" << 1250.0;
    QTest::newRow("seconds since the epoch") << "1725694999.6"
                                             << "1725695000.1" << 500.0;
    QTest::newRow("ms since the epoch") << "1725694999600"
                                        << "1725695000100" << 500.0;
    QTest::newRow("an app's date") << "24-Mar-2019 10:11:12.345"
                                   << "24-Mar-2019 10:11:13.345" << 1000.0;
    QTest::newRow("ISO") << "2019-03-24T10:11:12"
                         << "2019-03-24T10:12:12" << 60000.0;
    QTest::newRow("date and time") << "2019-03-24 10:11:12"
                                   << "2019-03-24 10:11:14" << 2000.0;
    QTest::newRow("German date") << "24.03.2019 10:11:12"
                                 << "24.03.2019 10:11:13" << 1000.0;
    QTest::newRow("clock") << "10:11:12.500"
                           << "10:11:13.000" << 500.0;
    QTest::newRow("American date") << "3/24/2019 9:11:12 AM"
                                   << "3/24/2019 9:11:13 AM" << 1000.0;
    QTest::newRow("American date over noon") << "03/24/2019 11:59:59.500 AM"
                                             << "03/24/2019 12:00:00.000 PM" << 500.0;
    QTest::newRow("two digits of the year") << "3/24/19 10:11"
                                            << "3/24/19 10:12" << 60000.0;
    QTest::newRow("a day that is not") << "2/30/2019 10:11:12"
                                       << "13/13/2019 10:11:12" << -1.0;
    QTest::newRow("a date alone") << "2019-03-24"
                                  << "24.03.2019" << -1.0;
    QTest::newRow("no time") << "yesterday"
                             << "10:99:12" << -1.0;
    QTest::newRow("negative") << "-5"
                              << "-1" << -1.0;
}

void tst_ObdCsv::times()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(double, betweenMs);
    const double a = csvTimeMs(first, CsvColumn::Metric);
    const double b = csvTimeMs(second, CsvColumn::Metric);
    if (betweenMs < 0) {
        QCOMPARE(a, -1.0);
        QCOMPARE(b, -1.0);
        return;
    }
    QVERIFY(a >= 0);
    QVERIFY(qAbs(b - a - betweenMs) < 0.5);
}

void tst_ObdCsv::values_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<double>("value"); // of the first sample, metric
    QTest::newRow("as it is") << QByteArray("Time,Vehicle Speed (km/h)\n0,86\n") << 86.0;
    QTest::newRow("miles") << QByteArray("Time,Speed (OBD)(mph)\n0,60\n") << 96.56064;
    QTest::newRow("Fahrenheit") << QByteArray("Time,Coolant Temp (°F)\n0,212\n") << 100.0;
    QTest::newRow("degree sign of the other encoding") << QByteArray("Time,Coolant Temp (\xb0"
                                                                     "F)\n0,32\n")
                                                       << 0.0;
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBFRPM,Time\n900,0\n") << 900.0;
    QTest::newRow("semicolons and decimal commas")
        << QByteArray("Time;Voltage (V)\n0;13,8\n") << 13.8;
    QTest::newRow("tabs") << QByteArray("Time\tVoltage (V)\n0\t13.8\n") << 13.8;
    QTest::newRow("quoted") << QByteArray(
                                   "\"Time\",\"Engine RPM, total\",\"RPM\"\n\"0\",\"x\",\"900\"\n")
                            << 900.0;
    QTest::newRow("padded, DOS line ends")
        << QByteArray("Time , RPM \r\n 0.0 , 900.000000 \r\n") << 900.0;
    QTest::newRow("preamble above the header")
        << QByteArray("# exported by an app\nCar: mine\nTime,RPM\n0,900\n") << 900.0;
}

void tst_ObdCsv::values()
{
    QFETCH(QByteArray, file);
    QFETCH(double, value);
    const SampleLog log = read(file);
    QCOMPARE(log.samples.size(), 1);
    QVERIFY(qAbs(double(log.samples[0].value) - value) < 0.001);
}

void tst_ObdCsv::raggedRows_data()
{
    QTest::addColumn<QByteArray>("rows"); // below "Time,RPM,Coolant Temp"
    QTest::addColumn<int>("samples");
    QTest::addColumn<int>("dropped");
    QTest::addColumn<int>("badLines");
    QTest::newRow("whole") << QByteArray("0,900,80\n1,910,81\n") << 4 << 0 << 0;
    QTest::newRow("missing as empty, dash and NaN")
        << QByteArray("0,,80\n1,-,81\n2,900,NaN\n") << 3 << 3 << 0;
    QTest::newRow("trailing comma") << QByteArray("0,900,80,\n") << 2 << 0 << 0;
    QTest::newRow("short row") << QByteArray("0,900\n1,900,80\n") << 3 << 0 << 0;
    QTest::newRow("last line cut in a number") << QByteArray("0,900,80\n1,91") << 2 << 0 << 1;
    QTest::newRow("last line cut behind a number")
        << QByteArray("0,900,80\n1,910,8") << 4 << 0 << 0;
    QTest::newRow("no number at all") << QByteArray("0,abc,def\n1,900,80\n") << 2 << 2 << 1;
    QTest::newRow("beyond reason")
        << QByteArray("0,99999,80\n1,900,-300\n2,inf,80\n") << 3 << 3 << 0;
    QTest::newRow("empty lines") << QByteArray("\n0,900,80\n\n") << 2 << 0 << 0;
}

void tst_ObdCsv::raggedRows()
{
    QFETCH(QByteArray, rows);
    QFETCH(int, samples);
    QFETCH(int, dropped);
    QFETCH(int, badLines);
    const SampleLog log = read("Time,RPM,Coolant Temp\n" + rows);
    QCOMPARE(log.samples.size(), samples);
    QCOMPARE(log.droppedValues, dropped);
    QCOMPARE(log.badLines, badLines);
}

void tst_ObdCsv::unusableFiles_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message"); // behind the file's name
    QTest::newRow("empty") << QByteArray("")
                           << ": line 1: expected an OBD-II header row (such as 'Engine RPM'), a "
                              "candump log or a recording, found an empty file";
    QTest::newRow("noise") << QByteArray("\x01\x02\x03\xff\xfe binary\n\x00\x01")
                           << ": line 1: expected an OBD-II header row (such as 'Engine RPM'), a "
                              "candump log or a recording, found '????? binary'";
    QTest::newRow("other columns") << QByteArray("a,b\n1,2\n")
                                   << ": line 1: expected an OBD-II header row (such as 'Engine "
                                      "RPM'), a candump log or a recording, found 'a,b'";
    QTest::newRow("a header alone") << QByteArray("Time,RPM\n")
                                    << ": line 1: expected rows of values below the header, found "
                                       "none";
    QTest::newRow("rows without values") << QByteArray("Time,RPM\n0,-\n1,-\n")
                                         << ": line 3: expected rows of values below the header, "
                                            "found none";
}

void tst_ObdCsv::unusableFiles()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    const QString path = write(content);
    QString error;
    QVERIFY(!openSource(path, &error));
    QCOMPARE(error, path + message);
    QVERIFY(!error.contains(QLatin1Char('\n')));

    error.clear();
    QVERIFY(!openSource(m_folder.path(), &error));
    QCOMPARE(error, m_folder.path() + QStringLiteral(": expected a file, found a directory"));
    error.clear();
    QVERIFY(!openSource(QStringLiteral("/dev/null"), &error));
    QCOMPARE(error, QStringLiteral("/dev/null: expected a file, found a pipe or a device"));
    error.clear();
    QVERIFY(!openSource(path + QStringLiteral("x"), &error));
    QVERIFY(error.startsWith(path + QStringLiteral("x: expected a readable file: ")));
}

void tst_ObdCsv::drivesByTheirTimes_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QVector<int>>("times");
    QTest::addColumn<QStringList>("remarks");
    const auto row = [](const char *name, const QByteArray &file, const QVector<int> &times,
                        const QStringList &remarks = {}) {
        QTest::newRow(name) << file << times << remarks;
    };
    row("decimal commas", "Time;RPM\n2,5;900\n4,25;910\n", {0, 1750});
    row("clock with a decimal comma", "Time;RPM\n10:11:12,500;900\n10:11:13,000;910\n", {0, 500});
    row("German date with a decimal comma",
        "Time;RPM\n24.03.2019 10:11:12,250;900\n24.03.2019 10:11:13,000;910\n", {0, 750});
    row("months first, told by a later row",
        "Time,RPM\n03/12/2019 23:59:59,900\n03/13/2019 00:00:01,910\n", {0, 2000});
    row("days first, told by a later row",
        "Time,RPM\n12/03/2019 23:59:59,900\n13/03/2019 00:00:01,910\n", {0, 2000});
    row("either, within a day", "Time,RPM\n03/04/2019 10:00:00,900\n03/04/2019 10:00:01,910\n",
        {0, 1000});
    row("either, over midnight", "Time,RPM\n03/04/2019 23:59:59,900\n03/05/2019 00:00:01,910\n",
        {0, 2000}, {"Dates such as '03/04/2019 23:59:59' taken as month/day/year"});
    row("not understood", "Time,RPM\nnoon,900\nlater,910\n", {0, 1000},
        {"Times such as 'noon' are not understood: played at 1 row per second"});
    row("none", "RPM\n900\n910\n", {0, 1000}, {"No time in this file: played at 1 row per second"});
}

void tst_ObdCsv::drivesByTheirTimes()
{
    QFETCH(QByteArray, file);
    QFETCH(QVector<int>, times);
    QFETCH(QStringList, remarks);
    const SampleLog log = read(file);
    QVector<int> found;
    for (const Sample &sample : log.samples)
        found.append(int(sample.atMs));
    QCOMPARE(found, times);
    QCOMPARE(log.remarks, remarks);
}

void tst_ObdCsv::rowsOfOneSecondShareIt()
{
    const SampleLog log = read("Engine run time,RPM\n5,1\n5,2\n6,3\n6,4\n6,5\n6,6\n8,7\n");
    QVector<qint64> moments;
    for (const Sample &sample : log.samples)
        moments.append(sample.atMs);
    QCOMPARE(moments, (QVector<qint64>{0, 500, 1000, 1250, 1500, 1750, 3000}));

    const SampleLog timeless = read("RPM\n1\n2\n3\n");
    QCOMPARE(timeless.durationMs, 2000);
    QVERIFY(timeless.remarks.join(QString()).contains(QStringLiteral("No time in this file")));

    const SampleLog apart = read("Date,Time,RPM\n2019-03-24,23:59:58,1\n2019-03-24,23:59:59,2\n"
                                 "2019-03-25,00:00:00,3\n2019-03-25,00:00:01,4\n");
    QCOMPARE(apart.samples[1].atMs, 1000);
    QCOMPARE(apart.durationMs, 2000); // midnight itself costs its own step

    // A second clock does not step in where the first one fails.
    const SampleLog two = read("Elapsed,Timestamp,RPM\n1,1725694999,1\n,1725695000,2\n3,,3\n");
    QCOMPARE(two.samples[1].atMs, 0);
    QCOMPARE(two.durationMs, 2000);

    const SampleLog restarted = read("Engine run time,RPM\n50,1\n51,2\n0,3\n,4\n1,5\n");
    QCOMPARE(restarted.durationMs, 2000);

    // A clock that was set back does not turn the drive around.
    const SampleLog backwards = read("Time,RPM\n5,1\n9,2\n7,3\n10,4\n");
    QCOMPARE(backwards.samples[2].atMs, 4000);
    QCOMPARE(backwards.details.value("irregularSteps").toInt(), 1);
}

void tst_ObdCsv::damagedEndPlaysTheGoodPart()
{
    QByteArray file = "Time,RPM\n";
    for (int second = 0; second < 100; ++second)
        file += QByteArray::number(second) + ",900\n";
    file += QByteArray("100,9\x00\xff\x01\x02", 9);
    const SampleLog log = read(file);
    QCOMPARE(log.samples.size(), 100);
    QCOMPARE(log.badLines, 1);
}

void tst_ObdCsv::hugeLineIsPassedOver()
{
    const SampleLog log =
        read("Time,RPM\n0,900\n" + QByteArray(5 * 1024 * 1024, 'x') + "\n1,910\n");
    QCOMPARE(log.samples.size(), 2);
    QCOMPARE(log.badLines, 1);
}

NORDA_TEST_MAIN(tst_ObdCsv)
#include "tst_obdcsv.moc"
