#include "benchfixture.h"
#include "dbc/framebuilder.h"
#include "dbcfiles.h"
#include "drives.h"
#include "mapcheck.h"
#include "mapsuggestion.h"
#include "rawcan.h"
#include "scenario/scenario.h"
#include "testfolder.h"

#include <QLabel>
#include <QMessageBox>

using namespace module;

/** A car's own frames on the pages, through its DBC file and a map. */
class tst_CarLog : public QObject, private BenchFixture
{
    Q_OBJECT
private slots:
    void cleanup()
    {
        removeBench();
        m_options.setup.car = {};
    }

    void values_data();
    void values();
    void goesMissingAndComesBack();
    void goesMissingForDays();
    void eventsDoNotGoMissing();
    void leavesAndGoesMissing_data();
    void leavesAndGoesMissing();
    void unusable_data();
    void unusable();
    void checksTheMap();
    void suggestsAMap();
    void suggestionIsAMap();
    void opensInTheWindow();
    void holdsAnswersToo();
    void isPlayedAgainByAScenario();
    void needsItsFilesInTheWindow();
    void realDoors_data();
    void realDoors();
    void realTire();
    void realClimate();
    void realDrive();
    void realDriveShowsNoMore_data();
    void realDriveShowsNoMore();

private:
    /** A car whose frame 100 has eight bytes of one signal each. */
    CarFiles smallCar(const QByteArray &path, const QByteArray &rule) const
    {
        QByteArray dbc = "BO_ 256 Small: 8 Gateway\n";
        for (int byte = 0; byte < 8; ++byte)
            dbc += QStringLiteral(" SG_ B%1 : %2|8@1+ (1,0) [0|255] \"\" Gateway\n")
                       .arg(byte)
                       .arg(8 * byte)
                       .toLatin1();
        return {m_folder.write("small.dbc", dbc),
                m_folder.write("small.json", "{\"" + path + "\":{\"dbc2vss\":{" + rule + "}}}")};
    }
    static QByteArray line(qint64 ms, quint32 id, const QByteArray &data)
    {
        return QStringLiteral("(%1) can0 %2#")
                   .arg(double(ms) / 1000.0, 0, 'f', 3)
                   .arg(id, 3, 16, QLatin1Char('0'))
                   .toLatin1()
                   .toUpper()
                   .replace("CAN0", "can0") +
               data.toHex().toUpper() + '\n';
    }
    static QString textOf(const QVariant &argument)
    {
        if (argument.userType() == QMetaType::QByteArray)
            return QLatin1String(argument.toByteArray().toHex());
        if (argument.userType() == QMetaType::UChar)
            return QString::number(argument.toUInt());
        if (!argument.canConvert<QVariantList>() || argument.userType() == QMetaType::QString)
            return argument.toString();
        QStringList elements;
        for (const QVariant &element : argument.value<QVariantList>())
            elements.append(element.toString());
        return elements.join(QLatin1Char('|'));
    }
    /** What the module sends at each moment, as "ms signal arguments". */
    static QStringList sent(const QString &log, const CarFiles &car)
    {
        QString error;
        const auto source = openSource(log, &error, Trim::Full, car);
        if (!source)
            qFatal("%s", qPrintable(error));
        QStringList lines;
        while (source->nextDueMs() >= 0) {
            const Emission emission = source->take();
            QStringList words;
            for (const QVariant &argument : emission.arguments)
                words.append(textOf(argument));
            lines.append(
                QStringLiteral("%1 %2 %3")
                    .arg(emission.atMs)
                    .arg(QLatin1String(emission.signal), words.join(QStringLiteral(", "))));
        }
        return lines;
    }

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
            lines += line(ms, m_dbc->messages().at(it.key()).id, it->data());
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

// ---- From frames to signals ---------------------------------------------------------------------

void tst_CarLog::values_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<int>("raw");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *path, int raw, const char *expected) {
        QTest::newRow(name) << QByteArray("Vehicle.") + path << raw << QString::fromUtf8(expected);
    };
    row("coolant", "Powertrain.CombustionEngine.ECT", 90, "gaugeTRValueDualNotify 194, ℉, 194");
    row("coolant by its OBD path", "OBD.CoolantTemperature", 90,
        "gaugeTRValueDualNotify 194, ℉, 194");
    row("speed", "Speed", 100, "gauTopBarTextNotify 100 km/h   62 mph");
    row("hood", "Body.Hood.IsOpen", 1, "doorStatus 1");
    row("trunk", "Body.Trunk.Rear.IsOpen", 1, "doorStatus 2");
    row("rear right door", "Cabin.Door.Row2.PassengerSide.IsOpen", 1, "doorStatus 32");
    row("closed door", "Cabin.Door.Row2.PassengerSide.IsOpen", 0, "doorStatus 0");
    row("lamp on", "OBD.Status.IsMILOn", 1, "checkEngineStatus 2");
    row("lamp off", "OBD.Status.IsMILOn", 0, "checkEngineStatus 1");
    row("tire", "Chassis.Axle.Row1.Wheel.Right.Tire.Pressure", 230,
        "tirePressureStatus 32, 0, --|33 psi|--|--|0");
    row("low tire", "Chassis.Axle.Row2.Wheel.Right.Tire.IsPressureLow", 1,
        "tirePressureStatus 40, 0, --|--|--|--|0");
    row("low tire, marked at its temperature", "Chassis.Axle.Row2.Wheel.Left.Tire.IsPressureLow", 1,
        "tireTemperatureStatus 36, 0, --|--|--|--");
    row("tire temperature", "Chassis.Axle.Row2.Wheel.Left.Tire.Temperature", 20,
        "tireTemperatureStatus 32, 0, --|--|68F|--");
    row("open belt", "Cabin.Seat.Row1.DriverSide.IsBelted", 0, "seatbeltStatus 1");
    row("closed belt", "Cabin.Seat.Row1.PassengerSide.IsBelted", 1, "seatbeltStatus 0");
    row("park", "Powertrain.Transmission.CurrentGear", 0, "checkGearPositionStatus 0");
    row("forward", "Powertrain.Transmission.CurrentGear", 3, "checkGearPositionStatus 2");
    row("north", "CurrentLocation.Heading", 0, "compassHeading N");
    row("south west", "CurrentLocation.Heading", 225, "compassHeading SW");
    row("fan", "Cabin.HVAC.Station.Row1.Driver.FanSpeed", 100,
        "NordaClimateCtrlStatusNotify 1|0|252|0|0|0|0|0|1|0|0|0|0|0|0|0|0|0|0|0|0|0|0");
    row("one temperature for both sides", "Cabin.HVAC.Station.Row1.Driver.Temperature", 20,
        "NordaClimateCtrlStatusNotify 1|0|0|0|0|0|68|68|1|0|0|0|0|0|0|0|0|0|0|0|0|0|0");
    row("lowest temperature", "Cabin.HVAC.Station.Row1.Driver.Temperature", 10,
        "NordaClimateCtrlStatusNotify 1|0|0|0|0|0|50|50|1|0|0|0|0|0|0|0|0|0|0|0|0|0|0");
    row("seat", "Cabin.Seat.Row1.DriverSide.HeatingCooling", 67,
        "NordaClimateCtrlStatusNotify 1|0|0|0|0|0|0|0|1|2|0|0|0|0|0|0|0|0|0|0|0|0|0");
    row("obstacle", "ADAS.ObstacleDetection.IsWarning", 1, "parkingTopBarText Obstacle");
    row("blind spot", "Private.BlindSpot.Right.IsWarning", 1, "parkingDistanceRear 0a04");
}

void tst_CarLog::values()
{
    QFETCH(QByteArray, path);
    QFETCH(int, raw);
    QFETCH(QString, expected);
    const QByteArray data = QByteArray(1, char(raw)) + QByteArray(7, '\0');
    const QStringList lines =
        sent(m_folder.write("raw.log", line(0, 0x100, data)), smallCar(path, "\"signal\":\"B0\""));
    QVERIFY2(lines.contains(QStringLiteral("0 ") + expected), qPrintable(lines.join('\n')));
}

void tst_CarLog::goesMissingAndComesBack()
{
    const CarFiles car = smallCar("Vehicle.LowVoltageBattery.CurrentVoltage",
                                  "\"signal\":\"B0\",\"interval_ms\":100");
    const QByteArray volts(8, char(12));
    QByteArray log;
    for (int ms = 0; ms <= 2000; ms += 200)
        log += line(ms, 0x100, volts);
    for (int ms = 2010; ms <= 9000; ms += 10)
        log += line(ms, 0x200, volts); // another frame goes on
    log += line(9000, 0x100, volts);
    const QStringList battery = sent(m_folder.write("raw.log", log), car).filter("batteryVoltage");
    QCOMPARE(battery, (QStringList{"0 batteryVoltage 12.0V", "3100 batteryVoltage --",
                                   "9000 batteryVoltage 12.0V"}));
}

/** In no longer than the frames take: nobody waits for the tenths of a second between them. */
void tst_CarLog::goesMissingForDays()
{
    static constexpr int frameCount = 500;
    static constexpr qint64 apartMs = 20 * 3600 * 1000;
    const CarFiles car = smallCar("Vehicle.LowVoltageBattery.CurrentVoltage",
                                  "\"signal\":\"B0\",\"interval_ms\":100");
    QByteArray log;
    QStringList expected;
    for (qint64 frame = 0; frame < frameCount; ++frame) {
        log += line(frame * apartMs, 0x100, QByteArray(8, char(12)));
        expected.append(QStringLiteral("%1 batteryVoltage 12.0V").arg(frame * apartMs));
        expected.append(QStringLiteral("%1 batteryVoltage --").arg(frame * apartMs + 1100));
    }
    expected.removeLast();
    QCOMPARE(sent(m_folder.write("raw.log", log), car).filter("batteryVoltage"), expected);
}

void tst_CarLog::eventsDoNotGoMissing()
{
    const CarFiles car =
        smallCar("Vehicle.Body.Hood.IsOpen", "\"signal\":\"B0\",\"on_change\":true");
    const QByteArray log =
        line(0, 0x100, QByteArray(8, '\1')) + line(600000, 0x200, QByteArray(8, '\0'));
    const QStringList doors = sent(m_folder.write("raw.log", log), car).filter("doorStatus");
    QCOMPARE(doors, QStringList{"0 doorStatus 1"});
}

void tst_CarLog::leavesAndGoesMissing_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<int>("off");
    QTest::addColumn<QStringList>("expected"); // on at 0 s, off at 1 s, on at 2 s, then missing
    const auto row = [](const char *name, const char *path, int off, const char *signal,
                        const char *whenOn, const char *whenOff) {
        QStringList lines;
        int turn = 0;
        for (const int ms : {0, 1000, 2000, 7100})
            lines.append(
                QStringLiteral("%1 %2 %3")
                    .arg(ms)
                    .arg(QLatin1String(signal), QLatin1String(turn++ % 2 == 0 ? whenOn : whenOff)));
        QTest::newRow(name) << QByteArray("Vehicle.") + path << off << lines;
    };
    row("obstacle behind", "Private.Obstacle.Rear.MiddleRight.Distance", 5, "parkingDistanceRear",
        "0702", "0500");
    row("obstacle in front", "Private.Obstacle.Front.Right.Distance", 5, "parkingDistanceFront",
        "00000055", "00000000");
    row("blind spot", "Private.BlindSpot.Left.IsWarning", 0, "parkingDistanceRear", "0904", "0000");
    row("climate", "Cabin.HVAC.IsAirConditioningActive", 0, "NordaClimateCtrlStatusNotify",
        "1|0|0|0|1|0|0|0|1|0|0|0|0|0|0|0|0|0|0|0|0|0|0",
        "1|0|0|0|0|0|0|0|1|0|0|0|0|0|0|0|0|0|0|0|0|0|0");
}

void tst_CarLog::leavesAndGoesMissing()
{
    QFETCH(QByteArray, path);
    QFETCH(int, off);
    QFETCH(QStringList, expected);
    const QByteArray on = QByteArray(8, '\1');
    const QByteArray log = line(0, 0x100, on) + line(1000, 0x100, QByteArray(8, char(off))) +
                           line(2000, 0x100, on) + line(9000, 0x200, on);
    const QStringList lines =
        sent(m_folder.write("raw.log", log), smallCar(path, "\"signal\":\"B0\""));
    QCOMPARE(lines.filter(expected.constFirst().section(QLatin1Char(' '), 1, 1)), expected);
}

// ---- What cannot be used ------------------------------------------------------------------------

void tst_CarLog::unusable_data()
{
    QTest::addColumn<QByteArray>("log");
    QTest::addColumn<QByteArray>("dbc");
    QTest::addColumn<QByteArray>("map");
    QTest::addColumn<QString>("message");
    const QByteArray log = "(1.0) can0 100#01\n";
    const QByteArray dbc = "BO_ 256 A: 8 X\n SG_ S : 0|8@1+ (1,0) [0|255] \"\" X\n";
    const QByteArray map = R"({"Vehicle.Speed":{"dbc2vss":{"signal":"S"}}})";
    const QByteArray none;
    QTest::newRow("no DBC file and no map")
        << log << none << none
        << "found none in 1 frames and 0 damaged lines; a raw log needs "
           "--dbc FILE and --map FILE at the start";
    QTest::newRow("a DBC file alone")
        << log << dbc << none << "--dbc: expected with --map, got it alone";
    QTest::newRow("no candump log") << QByteArray("Time,RPM\n0,800\n") << dbc << map
                                    << "raw.log: expected a candump log with --dbc and --map";
    QTest::newRow("no known frame")
        << QByteArray("(1.0) can0 101#01\n") << dbc << map
        << "raw.log: line 1: expected frames that the DBC file and the map turn into values for "
           "the pages, found none in 1 frames and 0 damaged lines";
    QTest::newRow("a map for another car")
        << log << dbc << QByteArray(map).replace("\"S\"", "\"T\"")
        << "car.json: Vehicle.Speed: expected a signal of the DBC file, found 'T', which no "
           "message has";
    QTest::newRow("a map of another format")
        << log << dbc << QByteArray(R"({"signals":[1,2]})")
        << "car.json: expected paths with 'dbc2vss', as a tree or by path, found none";
    QTest::newRow("a map that is no JSON") << log << dbc << QByteArray("version: 1\n")
                                           << "car.json: line 1: expected JSON: illegal value";
    QTest::newRow("a bad formula")
        << log << dbc
        << QByteArray(R"({"Vehicle.Speed":{"dbc2vss":{"signal":"S","transform":{"math":"x +"}}}})")
        << "car.json: Vehicle.Speed: dbc2vss: expected a formula in x as 'math'";
    QTest::newRow("no DBC format") << log << QByteArray("<xml/>\n") << map << "car.dbc: ";
}

void tst_CarLog::unusable()
{
    QFETCH(QByteArray, log);
    QFETCH(QByteArray, dbc);
    QFETCH(QByteArray, map);
    QFETCH(QString, message);
    const CarFiles car = {dbc.isNull() ? QString() : m_folder.write("car.dbc", dbc),
                          map.isNull() ? QString() : m_folder.write("car.json", map)};
    QString error;
    QVERIFY(!openSource(m_folder.write("raw.log", log), &error, Trim::Full, car));
    QVERIFY2(error.contains(message), qPrintable(error));
    QVERIFY(!error.contains(QLatin1Char('\n')));
}

// ---- Tools --------------------------------------------------------------------------------------

void tst_CarLog::checksTheMap()
{
    QString error;
    const QString dbc = m_folder.write("car.dbc", "BO_ 256 A: 8 X\n"
                                                  " SG_ Speed : 0|8@1+ (1,0) [0|255] \"mph\" X\n"
                                                  " SG_ Door : 8|1@1+ (1,0) [0|1] \"\" X\n");
    const QString map = m_folder.write("car.json", R"({
        "Vehicle.Speed": {"dbc2vss": {"signal": "Speed"}},
        "Vehicle.OBD.Speed": {"dbc2vss": {"signal": "Speed"}},
        "Vehicle.Cabin.Door.Row1.DriverSide.IsOpen": {"dbc2vss": {"signal": "Door"}},
        "Vehicle.Body.Hood.IsOpen": {"dbc2vss": {"signal": "Lid"}},
        "Vehicle.Body.Horn.IsActive": {"dbc2vss": {"signal": "Door"}}})");
    const auto lines = checkMap(dbc, map, &error);
    QVERIFY2(lines, qPrintable(error));
    QCOMPARE(lines->mid(0, 5),
             (QStringList{
                 "Vehicle.Body.Hood.IsOpen: expected a signal of the DBC file, found 'Lid', which "
                 "no message has",
                 "Vehicle.Body.Horn.IsActive: Door -> shown nowhere",
                 "Vehicle.Cabin.Door.Row1.DriverSide.IsOpen: Door -> Vehicle",
                 "Vehicle.OBD.Speed: Speed -> not used: the map has a better path for vehicle "
                 "speed",
                 "Vehicle.Speed: Speed -> Gauges; doubtful: the signal is in 'mph', the path in "
                 "'km/h'"}));
    QVERIFY(lines->contains("Climate: nothing"));
    QVERIFY(!checkMap(dbc, m_folder.filePath("none.json"), &error));
}

void tst_CarLog::suggestsAMap()
{
    QString error;
    const QString dbc = m_folder.write(
        "car.dbc", "BO_ 256 A: 8 X\n"
                   " SG_ EngineSpeed : 0|16@1+ (1,0) [0|9000] \"rpm\" X\n"
                   " SG_ VehicleSpeed : 16|8@1+ (1,0) [0|255] \"mph\" X\n"
                   " SG_ CoolantTemp : 24|8@1+ (1,0) [0|255] \"\" X\n"
                   " SG_ DoorFrontLeftStatus : 32|2@1+ (1,0) [0|3] \"\" X\n"
                   " SG_ EngineOilSpeed : 40|8@1+ (1,0) [0|9] \"l/h\" X\n"
                   "VAL_ 256 DoorFrontLeftStatus 0 \"CLOSED\" 1 \"OPEN\" 3 \"SNA\" ;\n");
    const auto lines = suggestMap(dbc, &error);
    QVERIFY2(lines, qPrintable(error));
    const QJsonObject map = QJsonDocument::fromJson(lines->join('\n').toUtf8()).object();
    QCOMPARE(map.keys(),
             (QStringList{"Vehicle.Cabin.Door.Row1.DriverSide.IsOpen",
                          "Vehicle.Powertrain.CombustionEngine.ECT",
                          "Vehicle.Powertrain.CombustionEngine.Speed", "Vehicle.Speed"}));
    const auto transform = [&map](const char *path) {
        return map[QLatin1String(path)].toObject()["dbc2vss"].toObject()["transform"].toObject();
    };
    QCOMPARE(transform("Vehicle.Speed")["math"].toString(), QStringLiteral("x * 1.609344"));
    const QJsonArray names =
        transform("Vehicle.Cabin.Door.Row1.DriverSide.IsOpen")["mapping"].toArray();
    QCOMPARE(names, (QJsonArray{QJsonObject{{"from", "CLOSED"}, {"to", false}},
                                QJsonObject{{"from", "OPEN"}, {"to", true}}}));
    const QString comment =
        map["Vehicle.Powertrain.CombustionEngine.ECT"].toObject()["comment"].toString();
    QCOMPARE(comment, QStringLiteral("doubtful: the signal has no unit; celsius is taken for it"));
    QVERIFY(!suggestMap(
        m_folder.write("car.dbc", "BO_ 256 A: 8 X\n SG_ S : 0|8@1+ (1,0) [0|1] \"\" X\n"), &error));
}

void tst_CarLog::suggestionIsAMap()
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

// ---- In the window ------------------------------------------------------------------------------

void tst_CarLog::opensInTheWindow()
{
    m_options.setup.car = smallCar("Vehicle.LowVoltageBattery.CurrentVoltage", "\"signal\":\"B0\"");
    makeBench();
    windows()->openWindow(81);
    const QByteArray volts(8, char(12));
    drop(m_folder.write("raw.log", line(0, 0x100, volts) + line(900, 0x100, volts)));
    QTRY_COMPARE(text("Txt_battery"), QStringLiteral("12.0V"));
    drop(m_folder.write("other.csv", "Time,Voltage\n0,13.5\n1,13.5\n")); // these need no files
    QTRY_COMPARE(text("Txt_battery"), QStringLiteral("13.5V"));
    drop(m_folder.filePath("raw.log"));
    QTRY_COMPARE(text("Txt_battery"), QStringLiteral("12.0V"));
}

/** As the log of a connected car does: what was asked, and its trouble codes. */
void tst_CarLog::holdsAnswersToo()
{
    const CarFiles car = smallCar("Vehicle.LowVoltageBattery.CurrentVoltage", "\"signal\":\"B0\"");
    const auto answer = [](int ms, const char *hex) {
        return line(ms, 0x7E8, QByteArray::fromHex(hex));
    };
    const QByteArray log = line(0, 0x100, QByteArray(8, char(12))) +
                           answer(100, "04410C1AF8") +       // engine speed
                           answer(150, "04414236B0") +       // voltage, which the car sends itself
                           answer(200, "1008430303040143") + // three codes in two frames
                           answer(210, "21C0120000000000") + answer(400, "024300") +
                           line(900, 0x100, QByteArray(8, char(12)));
    const QStringList lines = sent(m_folder.write("raw.log", log), car);
    QCOMPARE(lines.filter("centerGaugeValueNotify").last().section(',', 0, 0),
             QStringLiteral("100 centerGaugeValueNotify 1726"));
    QCOMPARE(lines.filter("batteryVoltage").last(), QStringLiteral("0 batteryVoltage 12.0V"));
    const QStringList codes = lines.filter("vehicleInfoText");
    QCOMPARE(codes.mid(codes.size() - 2),
             (QStringList{"210 vehicleInfoText Trouble codes: 3, P0304, P0143, U0012",
                          "400 vehicleInfoText , "}));
}

/** The scenario names all that explains the log, wherever it is saved. */
void tst_CarLog::isPlayedAgainByAScenario()
{
    const QByteArray volts(8, char(12));
    m_options.setup.car = smallCar("Vehicle.LowVoltageBattery.CurrentVoltage", "\"signal\":\"B0\"");
    makeBench();
    drop(m_folder.write("raw.log", line(0, 0x100, volts) + line(900, 0x100, volts)));
    windows()->openWindow(81);
    QTRY_COMPARE(text("Txt_battery"), QStringLiteral("12.0V"));
    QString error;
    const TestFolder other;
    const QString file = other.filePath("session.scenario");
    QVERIFY2(m_window->saveScenario(file, &error), qPrintable(error));
    removeBench();

    Scenario scenario;
    QVERIFY2(scenario.read(file, &error), qPrintable(error));
    QCOMPARE(scenario.setup.car.dbc, m_options.setup.car.dbc);
    QCOMPARE(scenario.setup.car.map, m_options.setup.car.map);
    Rig rig(scenario.setup);
    QVERIFY2(rig.open(testpaths::pluginFile(), &error), qPrintable(error));
    QCOMPARE(rig.session()->drive()->source()->statistics().value("kind").toString(),
             QStringLiteral("rawcan"));
    m_options.setup.car = {};
}

void tst_CarLog::needsItsFilesInTheWindow()
{
    makeBench();
    QString message;
    QTimer::singleShot(0, m_window.data(), [&message] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            qFatal("no message");
        message = box->text();
        box->reject();
    });
    const QString log = m_folder.write("raw.log", line(0, 0x100, QByteArray(8, '\0')));
    drop(log);
    QCOMPARE(message, log + ": line 1: expected OBD-II answers on 7E8 to 7EF, found none in 1 "
                            "frames and 0 damaged lines; a raw log needs --dbc FILE and "
                            "--map FILE at the start");
}

// ---- A real car on the pages --------------------------------------------------------------------

void tst_CarLog::realDoors_data()
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

void tst_CarLog::realDoors()
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

void tst_CarLog::realTire()
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

void tst_CarLog::realClimate()
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

bool tst_CarLog::openRealDrive()
{
    const QString log = recordedDrive("falcon_fg_engine_20210120.candump.log");
    if (!QFile::exists(log))
        return false;
    m_options.setup.car = {testpaths::source("tests/cars/falcon.dbc"),
                           testpaths::source("tests/cars/falcon.json")};
    makeBench(log);
    return true;
}

void tst_CarLog::realDrive()
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

void tst_CarLog::realDriveShowsNoMore_data()
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

void tst_CarLog::realDriveShowsNoMore()
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

NORDA_TEST_MAIN(tst_CarLog)
#include "tst_carlog.moc"
