#include "csvheader.h"
#include "drives.h"
#include "obdcsv.h"
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
    void signalsOfADrive();
    void missingQuantitiesAreMarks();
    void goesMissing_data();
    void goesMissing();
    void seekCatchesUp();
    void seekIsPlaying_data();
    void seekIsPlaying();
    void moreThanIsKept();
    void realDrive();

private:
    QString write(const QByteArray &content)
    {
        const QString path = m_folder.filePath(QStringLiteral("drive.csv"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }
    SampleLog read(const QByteArray &content)
    {
        QString error;
        const auto log = readObdCsv(write(content), &error);
        if (!log)
            qFatal("%s", qPrintable(error));
        return *log;
    }

    QTemporaryDir m_folder;
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

static QStringList drive(VehicleSource *source)
{
    QStringList lines;
    while (source->nextDueMs() >= 0) {
        const Emission emission = source->take();
        QStringList arguments;
        for (const QVariant &argument : emission.arguments)
            arguments.append(argument.userType() == QMetaType::QStringList
                                 ? argument.toStringList().join(QLatin1Char('|'))
                             : argument.userType() == QMetaType::UChar
                                 ? QString::number(argument.toInt())
                                 : argument.toString());
        lines.append(
            QStringLiteral("%1 %2 %3")
                .arg(emission.atMs)
                .arg(QString::fromLatin1(emission.signal), arguments.join(QStringLiteral(", "))));
    }
    return lines;
}

void tst_ObdCsv::signalsOfADrive()
{
    QString error;
    const auto source =
        openSource(write("Time,RPM,Speed (mph),Coolant Temp (°C),IAT,Engine Load,Oil Temp,Voltage\n"
                         "0,812.6,0,21,20,18.4,19,12.34\n"
                         "0.5,812.9,0,21,20,18.4,19,12.34\n"
                         "1,12400,62,130,-30,99.6,140,11.1\n"),
                   &error);
    QVERIFY2(source, qPrintable(error));
    const QStringList lines = drive(source.get());
    for (const char *known : {"gaugeT", "gaugeB", "gauTop", "battery", "center"})
        QCOMPARE(lines.filter(QLatin1String(known)).filter("--"), QStringList());
    QCOMPARE(lines.mid(lines.indexOf("0 NordaVerInfo V|3|12|7") + 1),
             (QStringList{
                 "0 gaugeTitlesNotify Tachometer|Oil Temp|Coolant Temp|Intake Air Temp|Engine "
                 "Calculated Load",
                 "0 centerGaugeValueNotify 812, RPM, 8",
                 "0 gauTopBarTextNotify 0 km/h   0 mph",
                 "0 gaugeTRValueDualNotify 70, ℉, 70",
                 "0 gaugeBLValueDualNotify 68, ℉, 68",
                 "0 gaugeBRValueDualNotify 18, %, 18",
                 "0 gaugeTLValueDualNotify 66, ℉, 66",
                 "0 batteryVoltage 12.3V",
                 "1000 centerGaugeValueNotify 12400, RPM, 100",
                 "1000 gauTopBarTextNotify 100 km/h   62 mph",
                 "1000 gaugeTRValueDualNotify 266, ℉, 250",
                 "1000 gaugeBLValueDualNotify -22, ℉, 0",
                 "1000 gaugeBRValueDualNotify 100, %, 100",
                 "1000 gaugeTLValueDualNotify 284, ℉, 250",
                 "1000 batteryVoltage 11.1V",
             }));
    QCOMPARE(source->durationMs(), 1000);
}

void tst_ObdCsv::missingQuantitiesAreMarks()
{
    QString error;
    const auto source = openSource(write("Time,RPM,IAT\n0,800,20\n"), &error);
    QCOMPARE(
        drive(source.get()),
        (QStringList{"0 gaugeGraphicalSettingNotify \1\1\1\1\1, ",
                     "0 gaugeTLValueNotify --, 0",
                     "0 gaugeTRValueNotify --, 0",
                     "0 gaugeBRValueNotify --, 0",
                     "0 peakIndicatorNotify 0",
                     "0 shifterArrowIndicatorNotify 0",
                     "0 gauTopBarTextNotify ",
                     "0 doorStatus 0",
                     "0 batteryVoltage --",
                     "0 tirePressureStatus 32, 0, --|--|--|--|0",
                     "0 tireTemperatureStatus 32, 0, --|--|--|--",
                     "0 checkEngineStatus 0",
                     "0 vehicleInfoText , ",
                     "0 vehTopBarText ",
                     "0 parkingDistanceRear ",
                     "0 parkingTopBarText ",
                     "0 TimeInfo -|-|-|-|-|-|-|-|-|-|-|-",
                     "0 NordaVerInfo V|3|12|7",
                     "0 gaugeTitlesNotify Tachometer|Transmission Temp|Coolant Temp|Intake Air "
                     "Temp|Engine Calculated Load",
                     "0 centerGaugeValueNotify 800, RPM, 8",
                     "0 gaugeBLValueDualNotify 68, ℉, 68"}));
    const QString findings = source->findings().join(QLatin1Char('\n'));
    QVERIFY(findings.contains(QStringLiteral("Engine speed: 1 samples, 800 to 800 rpm")));
    QVERIFY(findings.contains(
        QStringLiteral("Gauges: engine speed, intake air temperature; not engine load, coolant "
                       "temperature")));
    QVERIFY(findings.contains(QStringLiteral("Climate: nothing")));
}

void tst_ObdCsv::goesMissing_data()
{
    QTest::addColumn<QByteArray>("rows");
    QTest::addColumn<QString>("missing"); // when, in ms
    const auto rows = [](std::initializer_list<double> seconds, const char *values) {
        QByteArray text;
        for (const double second : seconds)
            text += QByteArray::number(second) + ',' + values + '\n';
        return text;
    };
    const QByteArray steady = rows({0, 1, 2, 3}, "800,20");
    QTest::newRow("a pause") << steady + rows({60, 61}, "800,20") << "8000";
    QTest::newRow("one column stays empty")
        << steady + rows({4, 5, 6, 7, 8, 9, 10}, "800,") << "8000";
    QTest::newRow("twice") << rows({0,  1,  2,  3,  4,  5,  6,  7,  8,  9, 20,
                                    21, 22, 23, 24, 25, 26, 27, 28, 29, 45},
                                   "800,20")
                           << "14000 34000";
    QTest::newRow("a short gap") << steady + rows({8}, "800,20") << "";
    QTest::newRow("fast, a second's gap") << rows({0, 0.1, 0.2, 1.2, 1.3}, "800,20") << "";
    QTest::newRow("fast, a longer gap") << rows({0, 0.1, 0.2, 1.3, 1.4}, "800,20") << "1200";
    QTest::newRow("every 30 seconds") << rows({0, 30, 60, 130, 160}, "800,20") << "";
    QTest::newRow("bursts of four")
        << rows({0, 0.2, 0.4, 0.6, 2, 2.2, 2.4, 2.6, 4, 4.2, 4.4, 4.6, 6}, "800,20") << "";
    QTest::newRow("several rows of each second")
        << rows({0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 2, 2, 2, 5, 5}, "800,20") << "";
    QTest::newRow("only once") << rows({0}, "800,20") + rows({1, 2, 600, 601}, "800,") << "";
}

void tst_ObdCsv::goesMissing()
{
    QFETCH(QByteArray, rows);
    QFETCH(QString, missing);
    QString error;
    const auto source = openSource(write("Time,RPM,IAT\n" + rows), &error);
    QVERIFY2(source, qPrintable(error));
    QStringList moments;
    for (const QString &line : drive(source.get()).filter("gaugeBLValueNotify --, 0"))
        moments.append(line.section(QLatin1Char(' '), 0, 0));
    QCOMPARE(moments.join(QLatin1Char(' ')), missing);
    const QString finding = source->findings().filter("Intake air temperature:").value(0);
    QCOMPARE(finding.contains("; missing "), !missing.isEmpty());
}

void tst_ObdCsv::seekCatchesUp()
{
    QString error;
    const auto source = openSource(
        write("Time,RPM,IAT\n0,800,20\n1,900,\n2,1000,30\n3,1100,\n4,1200,40\n"), &error);
    drive(source.get());
    source->seek(3000);
    const QStringList lines = drive(source.get());
    QCOMPARE(lines.mid(lines.size() - 5), (QStringList{"3000 centerGaugeValueNotify 1000, RPM, 10",
                                                       "3000 gaugeBLValueDualNotify 86, ℉, 86",
                                                       "3000 centerGaugeValueNotify 1100, RPM, 11",
                                                       "4000 centerGaugeValueNotify 1200, RPM, 12",
                                                       "4000 gaugeBLValueDualNotify 104, ℉, 104"}));
}

/** What the screens show after playing up to a moment. */
static QStringList shownAt(SampleSource *source, qint64 ms)
{
    QMap<QByteArray, QString> shown;
    while (source->nextDueMs() >= 0 && source->nextDueMs() < ms) {
        const Emission emission = source->take();
        shown.insert(emission.signal, emission.arguments[0].toString());
    }
    return QStringList(shown.values());
}

void tst_ObdCsv::seekIsPlaying_data()
{
    QTest::addColumn<int>("ms");
    for (const int ms : {0, 1, 500, 1000, 4321, 9999, 10000, 99999})
        QTest::addRow("%d ms", ms) << ms;
}

void tst_ObdCsv::seekIsPlaying()
{
    QFETCH(int, ms);
    SampleLog log; // quantities that fall silent at different moments
    for (int i = 0; i < 1000; ++i) {
        const Quantity quantity = Quantity(i % int(Quantity::Count));
        if (i < 60 * int(quantity) || quantity == Quantity::EngineSpeed)
            log.add(i * 10, quantity, i % 90);
    }
    log.durationMs = 9990;
    SampleSource played(log);
    SampleSource sought(log);
    const QStringList shown = shownAt(&played, ms);
    sought.seek(ms);
    QMap<QByteArray, QString> caughtUp;
    for (int i = 0; i < shown.size(); ++i) {
        const Emission emission = sought.take();
        QCOMPARE(emission.atMs, ms);
        caughtUp.insert(emission.signal, emission.arguments[0].toString());
    }
    QCOMPARE(QStringList(caughtUp.values()), shown);
    QCOMPARE(drive(&sought), drive(&played));
}

void tst_ObdCsv::moreThanIsKept()
{
    SampleLog log;
    log.capacity = 3;
    for (int i = 0; i < 5; ++i)
        log.add(i, Quantity::EngineSpeed, 900);
    log.add(5, Quantity::EngineSpeed, -1);
    QCOMPARE(log.samples.size(), 3);
    const SampleSource source(log);
    QVERIFY(source.findings().contains(QStringLiteral("2 values were not kept: the limit is 3")));
    QCOMPARE(source.statistics().value("beyondCapacity").toInt(), 2);
    QCOMPARE(source.statistics().value("droppedValues").toInt(), 1);
}

void tst_ObdCsv::realDrive()
{
    const QString path = recordedDrive("etios2014_live1_coldstart.csv");
    if (!QFile::exists(path))
        QSKIP("this recorded drive is not on this machine");
    QString error;
    const auto source = openSource(path, &error);
    QVERIFY2(source, qPrintable(error));
    const QJsonObject totals = source->statistics();
    QCOMPARE(totals.value("rows").toInt(), 3853);
    QCOMPARE(totals.value("badLines").toInt(), 0);
    QVERIFY(qAbs(totals.value("driveSeconds").toDouble() - 1893) < 1);
    const QJsonObject quantities = totals.value("quantities").toObject();
    const auto range = [&quantities](const char *name) {
        const QJsonObject quantity = quantities.value(QLatin1String(name)).toObject();
        return QPair<double, double>(quantity.value("min").toDouble(),
                                     quantity.value("max").toDouble());
    };
    QCOMPARE(range("Engine speed"), qMakePair(0.0, 2334.25));
    QCOMPARE(range("Coolant temperature"), qMakePair(77.0, 203.0));
    QCOMPARE(range("Intake air temperature"), qMakePair(75.2, 131.0));
    QCOMPARE(range("Engine load"), qMakePair(0.0, 98.431));
    QCOMPARE(range("Voltage"), qMakePair(10.332, 14.414));
    QCOMPARE(drive(source.get()).filter(QStringLiteral("batteryVoltage 10.3V")).size(), 1);
}

NORDA_TEST_MAIN(tst_ObdCsv)
#include "tst_obdcsv.moc"
