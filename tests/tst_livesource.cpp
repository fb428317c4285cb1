#include "drive.h"
#include "live/canlog.h"
#include "livebus.h"
#include "norda/vtqadaptor.h"
#include "testfolder.h"
#include "testmain.h"

using namespace module;

static const char dbc[] = R"(VERSION ""
BU_: ECU
BO_ 291 Engine: 8 ECU
 SG_ Rpm : 0|16@1+ (0.25,0) [0|16383] "rpm" ECU
 SG_ Volts : 16|8@1+ (0.1,0) [0|25] "V" ECU
)";

static const char map[] = R"({
"Vehicle.Powertrain.CombustionEngine.Speed":
    {"dbc2vss": {"signal": "Rpm", "interval_ms": 50}},
"Vehicle.LowVoltageBattery.CurrentVoltage":
    {"dbc2vss": {"signal": "Volts", "interval_ms": 50}}
})";

/** A car that is connected: its values on the way to the pages, and what may come between. */
class tst_LiveSource : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void showsWhatAnAdapterAnswers_data();
    void showsWhatAnAdapterAnswers();
    void showsWhatABusCarries();
    void neverSends();
    void hearsAnotherTester();
    void showsTroubleCodes();
    void comesBackAfterTheCable_data();
    void comesBackAfterTheCable();
    void forgetsASilentCar();
    void forgetsASilentBus();
    void listensWhilePaused();
    void isAlwaysNow();
    void logsWhatCanBePlayed();
    void logLines_data();
    void logLines();
    void tellsWhatItDoes();
    void tellsTheLoadOfTheBus_data();
    void tellsTheLoadOfTheBus();
    void namesThatCannotBeUsed_data();
    void namesThatCannotBeUsed();

private:
    /** Opens a source, which must work, and plays it. */
    void play(const QString &name, const LiveSettings &settings = {}, const CarFiles &car = {});
    CarFiles carFiles() const
    {
        return {m_folder.write("car.dbc", dbc), m_folder.write("car.json", map)};
    }
    static QString busName(const VirtualBus &bus)
    {
        return QStringLiteral("can:%1:%2").arg(bus.port().plugin, bus.port().interface);
    }
    static QString adapterName(const FakeAdapter &adapter)
    {
        const ElmPort port = adapter.port();
        return port.device.isEmpty()
                   ? QStringLiteral("elm327:tcp:%1:%2").arg(port.host).arg(port.port)
                   : QStringLiteral("elm327:") + port.device;
    }
    /** The arguments that a signal had last, as text. */
    QString last(const char *signal) const { return m_last.value(signal); }

    TestFolder m_folder;
    std::unique_ptr<Drive> m_drive;
    QMap<QByteArray, QString> m_last; // by signal
    int m_count = 0;
    QObject m_context;
};

void tst_LiveSource::init()
{
    const auto *adaptor = norda::VtqAdaptor::instance();
    const auto keep = [this](const char *signal, const QString &text) {
        m_last.insert(signal, text);
        ++m_count;
    };
    connect(adaptor, &norda::VtqAdaptor::centerGaugeValueNotify, &m_context,
            [keep](const QString &text) { keep("rpm", text); });
    connect(adaptor, &norda::VtqAdaptor::batteryVoltage, &m_context,
            [keep](const QString &text) { keep("volts", text); });
    connect(adaptor, &norda::VtqAdaptor::checkEngineStatus, &m_context,
            [keep](uchar lamp) { keep("lamp", QString::number(lamp)); });
    connect(adaptor, &norda::VtqAdaptor::vehicleInfoText, &m_context,
            [keep](const QString &line, const QString &next) { keep("info", line + '|' + next); });
    connect(adaptor, &norda::VtqAdaptor::gauTopBarTextNotify, &m_context,
            [keep](const QString &text) { keep("bar", text); });
}

void tst_LiveSource::cleanup()
{
    m_drive.reset();
    m_last.clear();
    m_count = 0;
    disconnect(norda::VtqAdaptor::instance(), nullptr, &m_context, nullptr);
}

void tst_LiveSource::play(const QString &name, const LiveSettings &settings, const CarFiles &car)
{
    QString error;
    auto source = openSource(name, &error, Trim::Full, car, settings);
    QVERIFY2(source, qPrintable(error));
    m_drive = std::make_unique<Drive>(std::move(source));
    m_drive->play();
}

void tst_LiveSource::showsWhatAnAdapterAnswers_data()
{
    QTest::addColumn<bool>("isSerial");
    QTest::newRow("pseudo terminal") << true;
    QTest::newRow("local port") << false;
}

void tst_LiveSource::showsWhatAnAdapterAnswers()
{
    QFETCH(bool, isSerial);
    FakeAdapter adapter(isSerial);
    play(adapterName(adapter));
    QTRY_COMPARE(last("rpm"), QStringLiteral("1726"));
    QTRY_COMPARE(last("volts"), QStringLiteral("12.5V"));
    adapter.answers["010C"] = "7E804410C0FA0";
    QTRY_COMPARE(last("rpm"), QStringLiteral("1000"));
    QVERIFY(adapter.commands.contains("010C1"));
}

void tst_LiveSource::showsWhatABusCarries()
{
    VirtualBus bus;
    play(busName(bus), {}, carFiles());
    QTRY_COMPARE((bus.send(0x123, "401f800000000000"), last("rpm")), QStringLiteral("2000"));
    QCOMPARE(last("volts"), QStringLiteral("12.8V"));
    QTRY_VERIFY(!bus.received().isEmpty()); // it asks for the others
    QCOMPARE(bus.received().first(), QByteArray("7df#0201005555555555"));
}

void tst_LiveSource::neverSends()
{
    VirtualBus bus;
    LiveSettings settings;
    settings.asking = Asking::Never;
    play(busName(bus), settings, carFiles());
    for (int i = 0; i < 10; ++i) {
        bus.send(0x123, "401f800000000000");
        bus.send(0x7E8, "1014490201314434");
        QTest::qWait(50);
    }
    QCOMPARE(last("rpm"), QStringLiteral("2000"));
    QCOMPARE(bus.received(), QByteArrayList());
}

/** What another device is answered comes for nothing. */
void tst_LiveSource::hearsAnotherTester()
{
    VirtualBus bus;
    LiveSettings settings;
    settings.asking = Asking::Never;
    play(busName(bus), settings);
    bus.send(0x7DF, "02010caaaaaaaaaa");
    QTRY_COMPARE((bus.send(0x7E8, "04410c1af8aaaaaa"), last("rpm")), QStringLiteral("1726"));
    QCOMPARE(bus.received(), QByteArrayList());
}

void tst_LiveSource::showsTroubleCodes()
{
    FakeAdapter adapter(false);
    adapter.answers["0101"] = "7E806410182000000";
    adapter.answers["03"] = "7E80643020301C143";
    play(adapterName(adapter));
    QTRY_COMPARE(last("lamp"), QStringLiteral("2"));
    QTRY_COMPARE(last("info"), QStringLiteral("Trouble codes: 2|P0301, U0143"));
    QTRY_COMPARE(last("bar"), QStringLiteral("32 km/h   20 mph"));
    m_last.clear();
    m_drive->seek(0); // brings all of it again
    QTRY_COMPARE(last("info"), QStringLiteral("Trouble codes: 2|P0301, U0143"));
    QTRY_COMPARE(last("bar"), QStringLiteral("32 km/h   20 mph"));
}

void tst_LiveSource::comesBackAfterTheCable_data()
{
    showsWhatAnAdapterAnswers_data();
}

void tst_LiveSource::comesBackAfterTheCable()
{
    QFETCH(bool, isSerial);
    FakeAdapter adapter(isSerial);
    play(adapterName(adapter));
    QTRY_COMPARE(last("rpm"), QStringLiteral("1726"));
    adapter.unplug();
    QTRY_COMPARE(last("bar"), QStringLiteral("No connection to the car"));
    QCOMPARE(last("rpm"), QStringLiteral("--"));
    QTest::qWait(1500); // tries in vain
    adapter.answers["010C"] = "7E804410C0FA0";
    adapter.plugIn();
    QTRY_COMPARE(last("rpm"), QStringLiteral("1000"));
    QTRY_COMPARE(last("bar"), QStringLiteral("32 km/h   20 mph"));
}

void tst_LiveSource::forgetsASilentCar()
{
    FakeAdapter adapter(false);
    play(adapterName(adapter));
    QTRY_COMPARE(last("rpm"), QStringLiteral("1726"));
    const auto answers = adapter.answers;
    adapter.answers = {{"ATZ", "ELM327 v1.5"}};
    QTRY_COMPARE(last("bar"), QStringLiteral("The car does not answer"));
    QCOMPARE(last("rpm"), QStringLiteral("--"));
    adapter.answers = answers;
    QTRY_COMPARE(last("rpm"), QStringLiteral("1726"));
    QTRY_COMPARE(last("bar"), QStringLiteral("32 km/h   20 mph"));
}

void tst_LiveSource::forgetsASilentBus()
{
    VirtualBus bus;
    play(busName(bus), {Asking::Never, 20, {}, {}}, carFiles());
    QTRY_COMPARE((bus.send(0x123, "401f800000000000"), last("rpm")), QStringLiteral("2000"));
    QTRY_COMPARE(last("rpm"), QStringLiteral("--"));
    bus.send(0x123, "401f800000000000");
    QTRY_COMPARE(last("rpm"), QStringLiteral("2000"));
}

void tst_LiveSource::listensWhilePaused()
{
    VirtualBus bus;
    play(busName(bus), {Asking::Never, 20, {}, {}}, carFiles());
    QTRY_COMPARE((bus.send(0x123, "401f800000000000"), last("rpm")), QStringLiteral("2000"));
    m_drive->pause();
    const qint64 pausedMs = m_drive->positionMs();
    m_count = 0;
    for (int i = 0; i < 20; ++i) {
        bus.send(0x123, "a00f800000000000");
        QTest::qWait(20);
    }
    QCOMPARE(m_count, 0);
    QCOMPARE(m_drive->positionMs(), pausedMs);
    m_drive->play();
    QTRY_COMPARE(last("rpm"), QStringLiteral("1000"));
    QTRY_VERIFY(m_drive->positionMs() >= pausedMs + 400);
}

void tst_LiveSource::isAlwaysNow()
{
    FakeAdapter adapter(false);
    play(adapterName(adapter));
    QTRY_COMPARE(last("rpm"), QStringLiteral("1726"));
    QCOMPARE(m_drive->durationMs(), -1LL);
    for (const double speed : {4.0, Drive::Unlimited}) {
        m_drive->setSpeed(speed);
        QCOMPARE(m_drive->speed(), 1.0);
    }
    m_last.clear();
    const qint64 liveMs = m_drive->source()->liveMs();
    m_drive->seek(3600000);
    QVERIFY(m_drive->positionMs() >= liveMs && m_drive->positionMs() < liveMs + 1000);
    QTRY_COMPARE(last("rpm"), QStringLiteral("1726"));
    m_drive->seek(0);
    QVERIFY(m_drive->positionMs() >= liveMs);
}

void tst_LiveSource::logsWhatCanBePlayed()
{
    FakeAdapter adapter(false);
    adapter.answers["0101"] = "7E806410182000000";
    LiveSettings settings;
    settings.log = m_folder.filePath("seen.log");
    play(adapterName(adapter), settings);
    QTRY_COMPARE(last("rpm"), QStringLiteral("1726"));
    QTRY_COMPARE(last("lamp"), QStringLiteral("2"));
    m_drive.reset();
    m_last.clear();
    QString error;
    m_drive = std::make_unique<Drive>(openSource(settings.log, &error));
    QCOMPARE(error, QString());
    QCOMPARE(m_drive->source()->statistics().value("kind").toString(), QStringLiteral("candump"));
    m_drive->setSpeed(Drive::Unlimited);
    m_drive->play();
    QTRY_COMPARE(last("rpm"), QStringLiteral("1726"));
    QTRY_COMPARE(last("lamp"), QStringLiteral("2"));
}

void tst_LiveSource::logLines_data()
{
    QTest::addColumn<CanFrame>("frame");
    QTest::addColumn<QByteArray>("line");
    const auto row = [](const char *name, const CanFrame &frame, const char *line) {
        QTest::newRow(name) << frame << QByteArray(line);
    };
    row("short", {0x7E8, false, QByteArray::fromHex("03410d56")},
        "(12.000345) can0 7E8#03410D56\n");
    row("small identifier", {0x7, false, QByteArray()}, "(12.000345) can0 007#\n");
    row("long", {0x18DAF110, true, QByteArray::fromHex("aa")}, "(12.000345) can0 18DAF110#AA\n");
    row("small long identifier", {0x7, true, QByteArray()}, "(12.000345) can0 00000007#\n");
    row("CAN FD", {0x7, false, QByteArray(12, '\x11')},
        "(12.000345) can0 007##0111111111111111111111111\n");
}

void tst_LiveSource::logLines()
{
    QFETCH(CanFrame, frame);
    QTEST(candumpLine(12000345, frame), "line");
}

void tst_LiveSource::tellsWhatItDoes()
{
    FakeAdapter adapter(false);
    play(adapterName(adapter));
    QTRY_COMPARE(last("rpm"), QStringLiteral("1726"));
    const VehicleSource *source = m_drive->source();
    const QString all = source->findings().join(QLatin1Char('\n'));
    QVERIFY2(all.contains(QRegularExpression("ELM327 v1.5 at 127.0.0.1:\\d+")), qPrintable(all));
    QVERIFY2(all.contains("Asking the car for 8 values"), qPrintable(all));
    QVERIFY2(all.contains(QRegularExpression("Engine speed: 1726 rpm, 0\\.\\d s ago")),
             qPrintable(all));
    const QVector<Findings> pages = source->findingsByPage();
    QCOMPARE(pages.value(0).heading, QStringLiteral("Connection"));
    QCOMPARE(pages.value(1).heading, QStringLiteral("Gauges"));
    QCOMPARE(pages.value(1).missing, QStringList{"oil, transmission or ambient temperature"});
    QCOMPARE(pages.value(1).whyMissing, QStringLiteral("Not known to this car"));
    QVERIFY(source->statistics().value("answers").toInt() > 3);
    adapter.unplug();
    QTRY_VERIFY(
        source->findings().contains("No connection: The remote host closed the connection"));
    QVERIFY(source->findings().join('\n').contains("Engine speed: has not come for 0 s"));
    QCOMPARE(source->findingsByPage().value(2).whyMissing, QStringLiteral("Without a connection"));
}

void tst_LiveSource::tellsTheLoadOfTheBus_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<int>("bitrate");
    QTest::addColumn<QString>("bus");
    QTest::newRow("not stated") << QString() << 500000
                                << " % of a bus of 500 kbit/s, assumed without ?bitrate=N";
    QTest::newRow("stated") << "?bitrate=83333" << 83333 << " % of a bus of 83.333 kbit/s";
    QTest::newRow("stated as usual") << "?bitrate=500000" << 500000 << " % of a bus of 500 kbit/s";
}

void tst_LiveSource::tellsTheLoadOfTheBus()
{
    QFETCH(QString, suffix);
    QFETCH(int, bitrate);
    QFETCH(QString, bus);
    static constexpr int bitsOfFrame = (47 + 64) * 110 / 100;
    static const QRegularExpression counted(QStringLiteral("^(\\d+) frames a second, (.*)$"));
    VirtualBus sender;
    play(busName(sender) + suffix, {Asking::Never, 20, {}, {}});
    QRegularExpressionMatch text;
    for (int i = 0; i < 3000 && text.captured(1).toInt() < 20; ++i) {
        sender.send(0x123, "401f800000000000");
        QTest::qWait(10);
        const QStringList lines = m_drive->source()->findings().filter(counted);
        text = counted.match(lines.value(0));
    }
    const int frames = text.captured(1).toInt();
    QVERIFY(frames >= 20);
    const QString load = QString::number(100.0 * frames * bitsOfFrame / bitrate, 'f', 0);
    QCOMPARE(text.captured(2), load + bus);
}

void tst_LiveSource::namesThatCannotBeUsed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("error");
    const QString forms = QStringLiteral(": expected can:PLUGIN:INTERFACE[?bitrate=N], "
                                         "elm327:DEVICE[@BAUD] or elm327:tcp:HOST:PORT");
    const auto malformed = [&forms](const char *name) {
        QTest::newRow(name) << QString(name) << name + forms;
    };
    malformed("can:");
    malformed("can:socketcan");
    malformed("can:socketcan:");
    malformed("can:socketcan:can0?bitrate=");
    malformed("can:socketcan:can0?bitrate=fast");
    malformed("can:socketcan:can0?bitrate=0");
    malformed("can:socketcan:can0?speed=1");
    malformed("elm327:");
    malformed("elm327:ttyUSB0");
    malformed("elm327:/dev/ttyUSB0@");
    malformed("elm327:/dev/ttyUSB0@0");
    malformed("elm327:tcp:");
    malformed("elm327:tcp:host");
    malformed("elm327:tcp:host:0");
    malformed("elm327:tcp:host:65536");
    malformed("elm327:tcp::35000");
    const auto unusable = [](const char *name, const char *why) {
        QTest::newRow(name) << QString(name) << QStringLiteral("%1: %2").arg(name, why);
    };
    unusable("can:socketcan:can77", "expected a CAN interface, found nothing");
    unusable("can:nosuchbus:can0", "No such plugin: 'nosuchbus'");
    unusable("elm327:/dev/ttyNOSUCH0", "expected a serial port, found nothing");
    const QString host = QStringLiteral("elm327:tcp:127.0.0.1:%1").arg(freePort());
    QTest::newRow("refusing host") << host << host + ": Connection refused";
}

void tst_LiveSource::namesThatCannotBeUsed()
{
    QFETCH(QString, name);
    QString error;
    QVERIFY(!openSource(name, &error));
    QTEST(error, "error");
}

NORDA_TEST_MAIN(tst_LiveSource)
#include "tst_livesource.moc"
