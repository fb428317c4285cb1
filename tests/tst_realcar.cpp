#include "benchfixture.h"
#include "dbc/framebuilder.h"
#include "dbc/signalbinding.h"
#include "dbcfiles.h"
#include "drives.h"
#include "mapsuggestion.h"
#include "rawlines.h"
#include "testfolder.h"

using namespace module;

/** Real cars on the pages: one by frames from its DBC file, one by its recorded drive. */
class tst_RealCar : public QObject, private BenchFixture
{
    Q_OBJECT
private slots:
    void cleanup()
    {
        removeBench();
        m_options.setup.car = {};
    }

    void doors_data();
    void doors();
    void tire();
    void climate();
    void recordedDriveIsShown();
    void recordedDriveShowsNoMore_data();
    void recordedDriveShowsNoMore();
    void suggestionIsAMap();

private:
    struct Setting
    {
        const char *signal;
        const char *valueName; // null for a number
        double value;
    };
    /** A frame for each message of the settings, at a moment, from the real car's DBC file. */
    QByteArray frames(int ms, const QVector<Setting> &settings) const
    {
        QMap<int, FrameBuilder> builders;
        for (const Setting &setting : settings) {
            const DbcPlace place = m_dbc->places(QLatin1String(setting.signal)).value(0);
            if (place.message < 0)
                qFatal("no %s", setting.signal);
            const DbcMessage &message = m_dbc->messages().at(place.message);
            auto builder = builders.find(place.message);
            if (builder == builders.end())
                builder = builders.insert(place.message, FrameBuilder(message));
            bool isSet = false;
            for (const DbcValue &named : message.fields.at(place.signal).values)
                isSet = isSet || (setting.valueName && named.name == setting.valueName &&
                                  builder->setRaw(place.signal, named.raw));
            if (!isSet && (setting.valueName || !builder->set(place.signal, setting.value)))
                qFatal("%s cannot be set", setting.signal);
        }
        QByteArray lines;
        for (auto it = builders.cbegin(); it != builders.cend(); ++it)
            lines += rawLine(ms, m_dbc->messages().at(it.key()).id, it->data());
        return lines;
    }
    bool readRealCar()
    {
        QString error;
        const QString file = dbcFile("Model3CAN.dbc");
        if (QFile::exists(file))
            m_dbc = Dbc::read(file, &error);
        m_options.setup.car = {file, testpaths::source("tests/cars/model3.json")};
        return m_dbc.has_value();
    }
    bool openRealDrive();
    void drive(const QByteArray &log, int page)
    {
        makeBench(m_folder.write("raw.log", log));
        windows()->openWindow(page);
    }

    TestFolder m_folder;
    std::optional<Dbc> m_dbc;
};

void tst_RealCar::doors_data()
{
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QByteArray>("icon");
    QTest::newRow("front left") << QByteArray("VCLEFT_frontLatchStatus")
                                << QByteArray("icon_door_front_left");
    QTest::newRow("front right") << QByteArray("VCRIGHT_frontLatchStatus")
                                 << QByteArray("icon_door_front_right");
    QTest::newRow("rear left") << QByteArray("VCLEFT_rearLatchStatus")
                               << QByteArray("icon_door_rear_left");
    QTest::newRow("rear right") << QByteArray("VCRIGHT_rearLatchStatus")
                                << QByteArray("icon_door_rear_right");
    QTest::newRow("trunk") << QByteArray("VCRIGHT_trunkLatchStatus") << QByteArray("icon_trunk");
    QTest::newRow("hood") << QByteArray("VCFRONT_frunkLatchStatus") << QByteArray("icon_hood");
}

void tst_RealCar::doors()
{
    if (!readRealCar())
        QSKIP("the real car's DBC file is not here");
    QFETCH(QByteArray, signal);
    QFETCH(QByteArray, icon);
    QByteArray log;
    for (int ms = 0; ms < 3000; ms += 100)
        log += frames(ms, {{signal.constData(), ms < 1000 ? "LATCH_CLOSED" : "LATCH_OPENED", 0}});
    drive(log, 81);
    QWidget *door = screen()->widgetNamed(QLatin1String(icon));
    session()->drive()->seek(500);
    QTRY_VERIFY(!door->isVisible());
    session()->drive()->seek(2000);
    QTRY_VERIFY(door->isVisible());
    int open = 0;
    for (const char *other :
         {"icon_hood", "icon_trunk", "icon_door_front_left", "icon_door_front_right",
          "icon_door_rear_left", "icon_door_rear_right"})
        open += screen()->widgetNamed(QLatin1String(other))->isVisible();
    QCOMPARE(open, 1);
}

void tst_RealCar::tire()
{
    if (!readRealCar())
        QSKIP("the real car's DBC file is not here");
    QByteArray log;
    for (int ms = 0; ms < 3000; ms += 100)
        log += frames(ms, {{"TPMSFLpressure31F", nullptr, 2.9},
                           {"TPMSFRpressure31F", nullptr, ms < 1000 ? 2.9 : 2.0},
                           {"TPMSRLpressure31F", nullptr, 2.9},
                           {"TPMSRRpressure31F", nullptr, 2.9},
                           {"TPMSFLtemp31F", nullptr, 20},
                           {"TPMSFRtemp31F", nullptr, 20},
                           {"TPMSRLtemp31F", nullptr, 20},
                           {"TPMSRRtemp31F", nullptr, 20}});
    drive(log, 81);
    const auto style = [this] {
        return screen()->widgetNamed(QStringLiteral("Txt_temp_front_right"))->styleSheet();
    };
    session()->drive()->seek(500);
    QTRY_COMPARE(text("Txt_psi_front_right"), QStringLiteral("42 psi"));
    QCOMPARE(text("Txt_temp_front_right"), QStringLiteral("68F"));
    const QString normal = style();
    session()->drive()->seek(2000);
    QTRY_COMPARE(text("Txt_psi_front_right"), QStringLiteral("29 psi"));
    QCOMPARE(text("Txt_psi_front_left"), QStringLiteral("42 psi"));
    QTRY_VERIFY(style() != normal); // the warning
}

void tst_RealCar::climate()
{
    if (!readRealCar())
        QSKIP("the real car's DBC file is not here");
    QByteArray log;
    for (int ms = 0; ms < 3000; ms += 100) {
        log += frames(ms, {{"UI_hvacReqTempSetpointLeft", nullptr, ms < 1000 ? 20.0 : 24.0},
                           {"UI_hvacReqTempSetpointRight", nullptr, 22.0}});
        log += frames(ms, {{"VCRIGHT_hvacBlowerSegment", "11", 0},
                           {"VCRIGHT_hvacPowerState", "ON", 0},
                           {"VCRIGHT_hvacACRunning", nullptr, 1}});
    }
    drive(log, 82);
    session()->drive()->seek(500);
    QTRY_COMPARE(text("Txt_left_temp"), QStringLiteral("68.00 F"));
    QCOMPARE(text("Txt_right_temp"), QStringLiteral("72.00 F"));
    session()->drive()->seek(2000);
    QTRY_COMPARE(text("Txt_left_temp"), QStringLiteral("75.00 F"));
}

bool tst_RealCar::openRealDrive()
{
    const QString log = recordedDrive("falcon_fg_engine_20210120.candump.log");
    if (!QFile::exists(log))
        return false;
    m_options.setup.car = {testpaths::source("tests/cars/falcon.dbc"),
                           testpaths::source("tests/cars/falcon.json")};
    makeBench(log);
    return true;
}

void tst_RealCar::recordedDriveIsShown()
{
    if (!openRealDrive())
        QSKIP("the recorded drive is not here");
    const QJsonObject found = session()->drive()->source()->statistics()["quantities"].toObject();
    const auto range = [&found](const char *name) {
        const QJsonObject one = found[QLatin1String(name)].toObject();
        return qMakePair(one["min"].toDouble(), one["max"].toDouble());
    };
    QCOMPARE(found.keys(), (QStringList{"Coolant temperature", "Engine speed", "Voltage"}));
    QCOMPARE(range("Engine speed"), qMakePair(0.0, 1405.25));
    QCOMPARE(range("Coolant temperature"), qMakePair(59.0, 125.6)); // 15 and 52 degrees Celsius
    QCOMPARE(range("Voltage"), qMakePair(10.3, 14.3));
    const auto showsAt = [this](qint64 ms, const char *label, const char *expected) {
        session()->drive()->seek(ms);
        QTRY_COMPARE(text(label), QString::fromUtf8(expected));
    };
    session()->drive()->pause();
    windows()->openWindow(81);
    showsAt(5000, "Txt_battery", "12.4V");
    showsAt(119000, "Txt_battery", "--"); // the bus is silent while the module boots
    QCOMPARE(text("Txt_psi_front_left"), QStringLiteral("--"));
    QVERIFY(!screen()->widgetNamed("key_engine")->isEnabled());
    windows()->openWindow(80);
    showsAt(5000, "Txt_up_right_value", "106 ℉");
    showsAt(119000, "Txt_up_right_value", "--");
    showsAt(121650, "Txt_up_right_value", "59 ℉"); // what the car says, for a tenth of a second
    showsAt(121800, "Txt_up_right_value", "126 ℉");
    QCOMPARE(text("Txt_down_left_value"), QStringLiteral("--"));
}

void tst_RealCar::recordedDriveShowsNoMore_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QStringList>("numbers");
    QTest::addColumn<QStringList>("unknown");
    QTest::newRow("gauges") << 80 << QStringList{"108 ℉", "749 RPM"}
                            << QStringList{"Txt_up_left_value", "Txt_down_left_value",
                                           "Txt_down_right_value"};
    QTest::newRow("vehicle") << 81 << QStringList{"14.1V"}
                             << QStringList{"Txt_psi_front_left",  "Txt_psi_front_right",
                                            "Txt_psi_rear_left",   "Txt_psi_rear_right",
                                            "Txt_temp_front_left", "Txt_temp_front_right",
                                            "Txt_temp_rear_left",  "Txt_temp_rear_right"};
    QTest::newRow("climate") << 82 << QStringList() << QStringList();
    QTest::newRow("parking") << 83 << QStringList() << QStringList();
}

void tst_RealCar::recordedDriveShowsNoMore()
{
    if (!openRealDrive())
        QSKIP("the recorded drive is not here");
    QFETCH(int, page);
    QFETCH(QStringList, numbers);
    QFETCH(QStringList, unknown);
    session()->drive()->pause();
    session()->drive()->seek(20000);
    QTRY_COMPARE(numbersOn(page), numbers);
    for (const QString &label : qAsConst(unknown))
        QCOMPARE(text(label.toLatin1()), QStringLiteral("--"));
}

void tst_RealCar::suggestionIsAMap()
{
    if (!readRealCar())
        QSKIP("the real car's DBC file is not here");
    QString error;
    const auto lines = suggestMap(m_options.setup.car.dbc, &error);
    QVERIFY2(lines, qPrintable(error));
    const auto map = SignalMap::parse(lines->join('\n').toUtf8(), "suggested", &error);
    QVERIFY2(map, qPrintable(error));
    QVERIFY(map->remarks().isEmpty());
    QCOMPARE(bindSignals(*map, *m_dbc).missing, QVector<int>());
    QVERIFY(lines->join('\n').contains("TPMSFLpressure31F"));
}

NORDA_TEST_MAIN(tst_RealCar)
#include "tst_realcar.moc"
