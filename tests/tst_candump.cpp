#include "candump.h"
#include "drives.h"
#include "obdpids.h"
#include "testmain.h"

using namespace module;

/** Logs of OBD-II traffic as candump writes them. */
class tst_Candump : public QObject
{
    Q_OBJECT
private slots:
    void lines_data();
    void lines();
    void pids_data();
    void pids();
    void countsWhatItMeets();
    void clocks_data();
    void clocks();
    void unusableLogs_data();
    void unusableLogs();
    void damagedLogPlaysItsGoodPart();
    void realDrive();

private:
    QString write(const QByteArray &content)
    {
        const QString path = m_folder.filePath(QStringLiteral("drive.log"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

    QTemporaryDir m_folder;
};

void tst_Candump::lines_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("sound");
    QTest::addColumn<int>("id");
    QTest::addColumn<QByteArray>("data");
    const QByteArray none;
    QTest::newRow("plain") << QByteArray("(1.5) can0 7E8#03410D56") << true << 0x7E8
                           << QByteArray("\x03\x41\x0D\x56");
    QTest::newRow("received") << QByteArray("(1.5) can0 7E8#0341 R") << true << 0x7E8
                              << QByteArray("\x03\x41");
    QTest::newRow("sent") << QByteArray("(1.5) vcan1 7DF#0201 T") << true << 0x7DF
                          << QByteArray("\x02\x01");
    QTest::newRow("no data") << QByteArray("(1.5) can0 123#") << true << 0x123 << none;
    QTest::newRow("extended id") << QByteArray("(1.5) can0 18DB33F1#0201") << true
                                 << int(0x98DB33F1) << QByteArray("\x02\x01");
    QTest::newRow("remote frame") << QByteArray("(1.5) can0 7E8#R") << true << 0x7E8 << none;
    QTest::newRow("long frame") << QByteArray("(1.5) can0 7E8##1"
                                              "00112233")
                                << true << 0x7E8 << QByteArray::fromHex("00112233");
    QTest::newRow("longest frame") << QByteArray("(1.5) can0 7E8##1" + QByteArray(128, '5')) << true
                                   << 0x7E8 << QByteArray(64, 'U');
    QTest::newRow("long frame too long")
        << QByteArray("(1.5) can0 7E8##1" + QByteArray(130, '5')) << false << 0 << none;
    QTest::newRow("long frame cut in a byte") << QByteArray("(1.5) can0 7E8##1"
                                                            "0")
                                              << false << 0 << none;
    QTest::newRow("long frame without its flags")
        << QByteArray("(1.5) can0 7E8##") << false << 0 << none;
    QTest::newRow("cut in the data") << QByteArray("(1.5) can0 7E8#0341F") << false << 0 << none;
    QTest::newRow("cut in the id") << QByteArray("(1.5) can0 7E") << false << 0 << none;
    QTest::newRow("cut in the time") << QByteArray("(1.5") << false << 0 << none;
    QTest::newRow("no time") << QByteArray("(abc) can0 7E8#00") << false << 0 << none;
    QTest::newRow("negative time") << QByteArray("(-1) can0 7E8#00") << false << 0 << none;
    QTest::newRow("no hex") << QByteArray("(1.5) can0 7E8#XY") << false << 0 << none;
    QTest::newRow("too long") << QByteArray("(1.5) can0 7E8#001122334455667788") << false << 0
                              << none;
    QTest::newRow("unknown mark") << QByteArray("(1.5) can0 7E8#00 Q") << false << 0 << none;
    QTest::newRow("noise") << QByteArray("\xff\x01\x02") << false << 0 << none;
    QTest::newRow("empty") << none << false << 0 << none;
}

void tst_Candump::lines()
{
    QFETCH(QByteArray, line);
    QFETCH(bool, sound);
    QFETCH(int, id);
    QFETCH(QByteArray, data);
    const auto frame = parseCandumpLine(line);
    QCOMPARE(frame.has_value(), sound);
    if (!sound)
        return;
    QCOMPARE(int(frame->id), id);
    QCOMPARE(frame->data, data);
    QCOMPARE(frame->timeUs, 1500000);
}

void tst_Candump::pids_data()
{
    QTest::addColumn<int>("pid");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("quantity");
    QTest::addColumn<double>("value");
    const auto row = [](int pid, const char *hex, Quantity quantity, double value) {
        QTest::addRow("%02X %s", pid, hex)
            << pid << QByteArray::fromHex(hex) << int(quantity) << value;
    };
    row(0x04, "FF", Quantity::EngineLoad, 100);
    row(0x04, "00", Quantity::EngineLoad, 0);
    row(0x05, "00", Quantity::CoolantTemperature, -40);
    row(0x05, "7B", Quantity::CoolantTemperature, 83);
    row(0x0B, "63", Quantity::ManifoldPressure, 99);
    row(0x0C, "1AF8", Quantity::EngineSpeed, 1726);
    row(0x0C, "FFFF", Quantity::EngineSpeed, 16383.75);
    row(0x0D, "56", Quantity::VehicleSpeed, 86);
    row(0x0F, "3C", Quantity::IntakeTemperature, 20);
    row(0x11, "33", Quantity::Throttle, 20);
    row(0x2F, "80", Quantity::FuelLevel, 50.196);
    row(0x33, "63", Quantity::BarometricPressure, 99);
    row(0x3C, "1B58", Quantity::CatalystTemperature, 660);
    row(0x42, "2B5C", Quantity::Voltage, 11.1);
    row(0x46, "3B", Quantity::AmbientTemperature, 19);
    row(0x5C, "82", Quantity::OilTemperature, 90);
    row(0x5E, "0140", Quantity::FuelRate, 16);
}

void tst_Candump::pids()
{
    QFETCH(int, pid);
    QFETCH(QByteArray, bytes);
    QFETCH(int, quantity);
    QFETCH(double, value);
    const Pid *found = findPid(quint8(pid));
    QVERIFY(found);
    QCOMPARE(found->bytes, bytes.size());
    QCOMPARE(int(found->quantity), quantity);
    const double seen = pidValue(*found, reinterpret_cast<const quint8 *>(bytes.constData()));
    QVERIFY2(qAbs(seen - value) < 0.001, qPrintable(QString::number(seen)));
}

void tst_Candump::countsWhatItMeets()
{
    QString error;
    const auto log = readCandump(write("(10.0) can0 7DF#02010C5555555555\n"
                                       "(10.1) can0 7E8#04410C1AF8CCCCCC\n"
                                       "(10.2) can0 7E9#0341053CCCCCCCCC R\n"
                                       "(10.3) can0 7E8#03410C1ACCCCCCCC\n" // a byte short
                                       "(10.4) can0 7E8#024300CCCCCCCCCC\n" // trouble codes
                                       "(10.5) can0 7E8#1014490201574D41\n" // first of several
                                       "(10.6) can0 123#1122\n"
                                       "(10.2) can0 7E8#03410D56CCCCCCCC\n" // clock set back
                                       "garbage\n"
                                       "(10.8) can0 7E8#0341FF00CCCCCCCC\n"), // unknown parameter
                                 &error);
    QVERIFY2(log, qPrintable(error));
    QCOMPARE(log->samples.size(), 3);
    QCOMPARE(log->samples[0].atMs, 100);
    QCOMPARE(log->samples[2].atMs, 600);
    QCOMPARE(log->badLines, 1);
    QCOMPARE(log->droppedValues, 1);
    QCOMPARE(log->durationMs, 800);
    const QJsonObject details = log->details;
    QCOMPARE(details.value("frames").toInt(), 9);
    QCOMPARE(details.value("requests").toInt(), 1);
    QCOMPARE(details.value("answers").toInt(), 7);
    QCOMPARE(details.value("otherAnswers").toInt(), 2);
    QCOMPARE(details.value("otherFrames").toInt(), 1);
    QCOMPARE(details.value("irregularSteps").toInt(), 1);
    QCOMPARE(details.value("framesPerPid").toObject().value("0C").toInt(), 2);
}

void tst_Candump::clocks_data()
{
    QTest::addColumn<QList<double>>("seconds");
    QTest::addColumn<QList<qint64>>("moments");
    QTest::addColumn<int>("irregular");
    using Seconds = QList<double>;
    using Moments = QList<qint64>;
    QTest::newRow("steady") << Seconds{5, 5.5, 7} << Moments{0, 500, 2000} << 0;
    QTest::newRow("out of order") << Seconds{5, 6, 5.5, 7} << Moments{0, 1000, 1000, 2000} << 1;
    QTest::newRow("a damaged moment")
        << Seconds{100, 9999999999, 101, 102} << Moments{0, 0, 0, 1000} << 2;
    QTest::newRow("set on the way")
        << Seconds{3, 4, 1725694999, 1725695000} << Moments{0, 1000, 1000, 2000} << 1;
    QTest::newRow("set back on the way")
        << Seconds{1000, 1001, 3, 4} << Moments{0, 1000, 1000, 2000} << 1;
    QTest::newRow("an hour's rest, and missing after five seconds")
        << Seconds{0, 3600, 3601} << Moments{0, 5000, 3600000, 3601000} << 0;
}

void tst_Candump::clocks()
{
    QFETCH(QList<double>, seconds);
    QFETCH(QList<qint64>, moments);
    QFETCH(int, irregular);
    QByteArray content;
    for (const double second : seconds)
        content += '(' + QByteArray::number(second, 'f', 6) + ") can0 7E8#03410D56\n";
    QString error;
    const auto log = readCandump(write(content), &error);
    QVERIFY2(log, qPrintable(error));
    QList<qint64> seen;
    for (const Sample &sample : log->samples)
        seen.append(sample.atMs);
    QCOMPARE(seen, moments);
    QCOMPARE(log->durationMs, moments.last());
    QCOMPARE(log->details.value("irregularSteps").toInt(), irregular);
}

void tst_Candump::unusableLogs_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message");
    QTest::newRow("no answers") << QByteArray("(1.0) can0 123#00\n(2.0) can0 7E0#02010C\n")
                                << ": line 2: expected OBD-II answers on 7E8 to 7EF, found none in "
                                   "2 frames and 0 damaged lines; a raw log needs --dbc FILE and "
                                   "--map FILE at the start";
    QTest::newRow("cut") << QByteArray("(1.0) can0 123#00\n(1725694999.6")
                         << ": line 2: expected OBD-II answers on 7E8 to 7EF, found none in 1 "
                            "frames and 1 damaged lines; a raw log needs --dbc FILE and "
                            "--map FILE at the start";
}

void tst_Candump::unusableLogs()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    const QString path = write(content);
    QString error;
    QVERIFY(!openSource(path, &error));
    QCOMPARE(error, path + message);
}

void tst_Candump::damagedLogPlaysItsGoodPart()
{
    QByteArray content("\xff\xfe noise\n");
    for (int i = 0; i < 50; ++i)
        content += "(" + QByteArray::number(100 + i) + ".0) can0 7E8#03410D" +
                   QByteArray::number(0x10 + i, 16) + "\n";
    content += "(150.0) can0 7E8#034";
    QString error;
    const auto source = openSource(write(content), &error);
    QVERIFY2(source, qPrintable(error));
    QCOMPARE(source->durationMs(), 49000);
    QCOMPARE(source->statistics().value("badLines").toInt(), 2);
    QVERIFY(source->findings().contains(QStringLiteral("2 lines could not be read")));
}

void tst_Candump::realDrive()
{
    const QString path = recordedDrive("skoda_obd2_20240907.candump.log");
    if (!QFile::exists(path))
        QSKIP("this recorded drive is not on this machine");
    QString error;
    const auto source = openSource(path, &error);
    QVERIFY2(source, qPrintable(error));
    const QJsonObject totals = source->statistics();
    QCOMPARE(totals.value("frames").toInt(), 15296);
    QCOMPARE(totals.value("requests").toInt(), 7648);
    QCOMPARE(totals.value("answers").toInt(), 7648);
    QCOMPARE(totals.value("otherFrames").toInt(), 0);
    const QJsonObject perPid = totals.value("framesPerPid").toObject();
    for (const char *pid : {"04", "05", "0C", "0D", "0F", "42", "46"})
        QCOMPARE(perPid.value(QLatin1String(pid)).toInt(), 273);
    const QJsonObject quantities = totals.value("quantities").toObject();
    const auto limit = [&quantities](const char *name, const char *which) {
        return quantities.value(QLatin1String(name))
            .toObject()
            .value(QLatin1String(which))
            .toDouble();
    };
    QCOMPARE(qFloor(limit("Engine speed", "max")), 2957);
    QCOMPARE(qRound(limit("Coolant temperature", "min")), 70);
    QCOMPARE(qRound(limit("Coolant temperature", "max")), 208);
    QCOMPARE(limit("Voltage", "min"), 11.101);
    QCOMPARE(limit("Voltage", "max"), 15.308);
    QCOMPARE(limit("Vehicle speed", "max"), 86.0);
    QVERIFY(qAbs(totals.value("driveSeconds").toDouble() - 1909.6) < 0.1);
}

NORDA_TEST_MAIN(tst_Candump)
#include "tst_candump.moc"
