#include "benchfixture.h"
#include "mapcheck.h"
#include "mapsuggestion.h"
#include "rawcan.h"
#include "rawlines.h"
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
    void opensInTheWindow();
    void holdsAnswersToo();
    void isPlayedAgainByAScenario();
    void needsItsFilesInTheWindow();

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

    TestFolder m_folder;
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
    const QStringList lines = sent(m_folder.write("raw.log", rawLine(0, 0x100, data)),
                                   smallCar(path, "\"signal\":\"B0\""));
    QVERIFY2(lines.contains(QStringLiteral("0 ") + expected), qPrintable(lines.join('\n')));
}

void tst_CarLog::goesMissingAndComesBack()
{
    const CarFiles car = smallCar("Vehicle.LowVoltageBattery.CurrentVoltage",
                                  "\"signal\":\"B0\",\"interval_ms\":100");
    const QByteArray volts(8, char(12));
    QByteArray log;
    for (int ms = 0; ms <= 2000; ms += 200)
        log += rawLine(ms, 0x100, volts);
    for (int ms = 2010; ms <= 9000; ms += 10)
        log += rawLine(ms, 0x200, volts); // another frame goes on
    log += rawLine(9000, 0x100, volts);
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
        log += rawLine(frame * apartMs, 0x100, QByteArray(8, char(12)));
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
        rawLine(0, 0x100, QByteArray(8, '\1')) + rawLine(600000, 0x200, QByteArray(8, '\0'));
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
    const QByteArray log = rawLine(0, 0x100, on) + rawLine(1000, 0x100, QByteArray(8, char(off))) +
                           rawLine(2000, 0x100, on) + rawLine(9000, 0x200, on);
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

// ---- In the window ------------------------------------------------------------------------------

void tst_CarLog::opensInTheWindow()
{
    m_options.setup.car = smallCar("Vehicle.LowVoltageBattery.CurrentVoltage", "\"signal\":\"B0\"");
    makeBench();
    windows()->openWindow(81);
    const QByteArray volts(8, char(12));
    drop(m_folder.write("raw.log", rawLine(0, 0x100, volts) + rawLine(900, 0x100, volts)));
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
        return rawLine(ms, 0x7E8, QByteArray::fromHex(hex));
    };
    const QByteArray log = rawLine(0, 0x100, QByteArray(8, char(12))) +
                           answer(100, "04410C1AF8") +       // engine speed
                           answer(150, "04414236B0") +       // voltage, which the car sends itself
                           answer(200, "1008430303040143") + // three codes in two frames
                           answer(210, "21C0120000000000") + answer(400, "024300") +
                           rawLine(900, 0x100, QByteArray(8, char(12)));
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
    drop(m_folder.write("raw.log", rawLine(0, 0x100, volts) + rawLine(900, 0x100, volts)));
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
    const QString log = m_folder.write("raw.log", rawLine(0, 0x100, QByteArray(8, '\0')));
    drop(log);
    QCOMPARE(message, log + ": line 1: expected OBD-II answers on 7E8 to 7EF, found none in 1 "
                            "frames and 0 damaged lines; a raw log needs --dbc FILE and "
                            "--map FILE at the start");
}

NORDA_TEST_MAIN(tst_CarLog)
#include "tst_carlog.moc"
