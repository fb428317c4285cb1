#include "broadcast/broadcaster.h"
#include "broadcast/mapinverse.h"
#include "dbc/framedecoder.h"
#include "dbcfiles.h"
#include "ecucar.h"
#include "testmain.h"

#include <cmath>

using namespace ecu;
using module::CanFrame;
using module::Dbc;
using module::Quantity;
using module::SignalMap;

/** A car's own frames, from what it measures: decoded again, they are the same values. */
class tst_EcuBroadcast : public QObject
{
    Q_OBJECT
private slots:
    void signalValues_data();
    void signalValues();
    void decodedAgain();
    void unknownIsNotSent();
    void multiplexed();
    void periods_data();
    void periods();
    void unusable_data();
    void unusable();
};

/** A DBC file of one message, and a map to the vehicle's speed. */
static Dbc dbcOf(const QByteArray &signal, const QByteArray &statements = {})
{
    return parsed<Dbc>("BO_ 256 M: 8 U\n SG_ S : " + signal + " \"\" U\n" + statements);
}

static SignalMap mapOf(const QByteArray &transform, const QByteArray &path = "Vehicle.Speed")
{
    const QByteArray rest = transform.isEmpty() ? "" : ", \"transform\": " + transform;
    return parsed<SignalMap>("{\"" + path + "\": {\"dbc2vss\": {\"signal\": \"S\"" + rest + "}}}");
}

void tst_EcuBroadcast::signalValues_data()
{
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QByteArray>("transform");
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("expected"); // not a number for none
    const auto row = [](const char *name, const char *signal, const char *transform, double value,
                        double expected) {
        QTest::newRow(name) << QByteArray(signal) << QByteArray(transform) << value << expected;
    };
    const char *byte = "0|8@1+ (1,0) [0|0]";
    row("as it is", byte, "", 51, 51);
    row("rounded to a step", "0|8@1+ (0.5,0) [0|0]", "", 51.3, 51.5);
    row("with an offset", "0|8@1+ (1,-40) [0|0]", "", 83, 83);
    row("more than it can say", byte, "", 300, 255);
    row("less than it can say", "0|8@1+ (1,-40) [0|0]", "", -100, -40);
    row("with a sign", "0|8@1- (1,0) [0|0]", "", -100, -100);
    row("a falling factor", "0|8@1+ (-0.5,10) [0|0]", "", 4, 4);
    row("64 bits", "0|64@1+ (0.001,0) [0|0]", "", 51.25, 51.25);
    row("times two", byte, R"({"math": "x*2"})", 100, 50);
    row("miles", "0|16@1+ (0.01,0) [0|0]", R"({"math": "x*1.609344"})", 100, 62.14);
    row("falling", byte, R"({"math": "200-x"})", 150, 50);
    row("floor", byte, R"({"math": "floor(x/10)*10"})", 50, 50);
    row("floor, between its steps", byte, R"({"math": "floor(x/10)*10"})", 58, 60);
    row("beyond the formula", byte, R"({"math": "x/2"})", 500, 255);
    row("no value at its ends", byte, R"({"math": "1/x"})", 0.5, qQNaN());
    const char *table = R"({"mapping": [{"from": 3, "to": 10}, {"from": 7, "to": 20}]})";
    row("a table", byte, table, 20, 7);
    row("a table, between its rows", byte, table, 12, 3);
    const char *names = R"({"mapping": [{"from": "slow", "to": 10}, {"from": "fast", "to": 20}]})";
    row("names of values", "0|8@1+ (2,1) [0|0]", names, 20, 11);
    row("a name that no value has", byte, R"({"mapping": [{"from": "?", "to": 1}]})", 1, qQNaN());
}

void tst_EcuBroadcast::signalValues()
{
    QFETCH(QByteArray, signal);
    QFETCH(QByteArray, transform);
    QFETCH(double, value);
    QFETCH(double, expected);
    const Dbc dbc = dbcOf(signal, "VAL_ 256 S 2 \"slow\" 5 \"fast\" ;\n");
    const auto found =
        signalValue(mapOf(transform).entries().constFirst(),
                    dbc.messages().constFirst().fields.constFirst(), Quantity::VehicleSpeed, value);
    QCOMPARE(found.has_value(), !std::isnan(expected));
    if (found)
        QVERIFY2(std::abs(*found - expected) < 1e-9, qPrintable(QString::number(*found, 'g', 17)));
}

static const QByteArray carDbc = R"(
BO_ 256 Engine: 8 U
 SG_ Rpm : 7|16@0+ (0.25,0) [0|0] "rpm" U
 SG_ Kmh : 16|12@1+ (0.1,0) [0|0] "km/h" U
 SG_ Coolant : 32|8@1+ (1,-40) [0|0] "degC" U
BO_ 2566844672 Body: 2 U
 SG_ Battery : 0|8@1+ (0.1,0) [0|0] "V" U
 SG_ Door : 8|2@1+ (1,0) [0|0] "" U
BO_ 300 Unmapped: 8 U
 SG_ Other : 0|8@1+ (1,0) [0|0] "" U
VAL_ 2566844672 Door 0 "Shut" 1 "Open" 3 "SNA" ;
)";

static const QByteArray carMap = R"({
  "Vehicle.Powertrain.CombustionEngine.Speed": {"dbc2vss": {"signal": "Rpm", "interval_ms": 20}},
  "Vehicle.Speed": {"dbc2vss": {"signal": "Kmh", "interval_ms": 100}},
  "Vehicle.OBD.CoolantTemperature": {"dbc2vss": {"signal": "Coolant", "interval_ms": 1000}},
  "Vehicle.LowVoltageBattery.CurrentVoltage": {"dbc2vss": {"signal": "Battery", "interval_ms": 1000}},
  "Vehicle.Cabin.Door.Row1.DriverSide.IsOpen": {"dbc2vss": {"signal": "Door", "interval_ms": 1000,
      "transform": {"mapping": [{"from": "Open", "to": true}, {"from": "Shut", "to": false}]}}}
})";

/** By path, what a car's own reader makes of frames. */
static QMap<QString, QVariant> decodedValues(const SignalMap &map, const Dbc &dbc,
                                             const QVector<CanFrame> &frames)
{
    module::FrameDecoder decoder(map, dbc);
    QMap<QString, QVariant> values;
    for (const CanFrame &frame : frames) {
        const quint32 id = frame.id | (frame.isExtended ? module::DbcMessage::extendedFlag : 0);
        const auto *bytes = reinterpret_cast<const quint8 *>(frame.data.constData());
        for (const module::PathValue &value : decoder.decode(0, id, bytes, frame.data.size()))
            values.insert(map.entries().at(value.entry).path, value.value);
    }
    return values;
}

void tst_EcuBroadcast::decodedAgain()
{
    const Dbc dbc = parsed<Dbc>(carDbc);
    const SignalMap map = parsed<SignalMap>(carMap);
    Car car = testCar();
    car.values.set(Quantity::DoorFrontLeft, 1);
    Broadcaster broadcaster(map, dbc);
    const QVector<CanFrame> frames = broadcaster.takeDue(car, 0);
    QCOMPARE(frames.size(), 2);
    QCOMPARE(frames[0].id, quint32(256));
    QCOMPARE(frames[0].isExtended, false);
    QCOMPARE(frames[1].id, quint32(2566844672U & 0x1FFFFFFF));
    QCOMPARE(frames[1].isExtended, true);
    QCOMPARE(frames[1].data.size(), 2);
    const auto values = decodedValues(map, dbc, frames);
    const QMap<QString, QVariant> expected = {
        {"Vehicle.Powertrain.CombustionEngine.Speed", 1726.0},
        {"Vehicle.Speed", 51.0},
        {"Vehicle.OBD.CoolantTemperature", 83.0},
        {"Vehicle.LowVoltageBattery.CurrentVoltage", 13.9},
        {"Vehicle.Cabin.Door.Row1.DriverSide.IsOpen", true},
    };
    QCOMPARE(values, expected);
}

/** A frame of which nothing is known; 0 for what is not known in another one. */
void tst_EcuBroadcast::unknownIsNotSent()
{
    Car car;
    car.values.set(Quantity::VehicleSpeed, 51.2);
    Broadcaster broadcaster(parsed<SignalMap>(carMap), parsed<Dbc>(carDbc));
    const QVector<CanFrame> frames = broadcaster.takeDue(car, 0);
    QCOMPARE(frames.size(), 1);
    QCOMPARE(frames[0].data.toHex(), QByteArray("0000000200000000"));
}

/** One frame for each value of the multiplexor, with what is always there in each. */
void tst_EcuBroadcast::multiplexed()
{
    const Dbc dbc = parsed<Dbc>(R"(
BO_ 256 M: 4 U
 SG_ Mux M : 0|8@1+ (1,0) [0|0] "" U
 SG_ Kmh : 8|8@1+ (1,0) [0|0] "" U
 SG_ Coolant m1 : 16|8@1+ (1,0) [0|0] "" U
 SG_ Oil m2 : 16|8@1+ (1,0) [0|0] "" U
)");
    const SignalMap map = parsed<SignalMap>(R"({
  "Vehicle.Speed": {"dbc2vss": {"signal": "Kmh"}},
  "Vehicle.OBD.CoolantTemperature": {"dbc2vss": {"signal": "Coolant"}},
  "Vehicle.OBD.OilTemperature": {"dbc2vss": {"signal": "Oil"}}
})");
    Broadcaster broadcaster(map, dbc);
    QList<QByteArray> data;
    for (const CanFrame &frame : broadcaster.takeDue(testCar(), 0))
        data.append(frame.data.toHex());
    QCOMPARE(data, (QList<QByteArray>{"01335300", "02336000"}));
}

void tst_EcuBroadcast::periods_data()
{
    QTest::addColumn<int>("intervalMs");
    QTest::addColumn<int>("frames"); // in a second
    QTest::newRow("shortest") << 1 << 100;
    QTest::newRow("half of what the map wants") << 50 << 40;
    QTest::newRow("longest") << 5000 << 10;
}

void tst_EcuBroadcast::periods()
{
    QFETCH(int, intervalMs);
    QFETCH(int, frames);
    const SignalMap map = parsed<SignalMap>(
        "{\"Vehicle.Speed\": {\"dbc2vss\": {\"signal\": \"S\", \"interval_ms\": " +
        QByteArray::number(intervalMs) + "}}}");
    Broadcaster broadcaster(map, dbcOf("0|8@1+ (1,0) [0|0]"));
    const Car car = testCar();
    int count = 0;
    for (qint64 nowMs = 0; nowMs < 1000; nowMs = broadcaster.nextDueMs())
        count += broadcaster.takeDue(car, nowMs).size();
    QCOMPARE(count, frames);
    // After a long pause it does not catch up.
    QCOMPARE(broadcaster.takeDue(car, 100000).size(), 1);
    QCOMPARE(broadcaster.takeDue(car, 100000).size(), 0);
}

void tst_EcuBroadcast::unusable_data()
{
    QTest::addColumn<QByteArray>("dbc");
    QTest::addColumn<QByteArray>("map");
    QTest::addColumn<QString>("message"); // after the folder
    QTest::newRow("no DBC file") << QByteArray() << carMap << "car.dbc: ";
    QTest::newRow("no map") << carDbc << QByteArray() << "car.json: ";
    QTest::newRow("a map of another car")
        << carDbc << QByteArray(R"({"Vehicle.Speed": {"dbc2vss": {"signal": "Gone"}}})")
        << "car.json: expected the path of a measured value with a signal of ";
    QTest::newRow("a path that is none of the car's values")
        << carDbc << QByteArray(R"({"Vehicle.Other": {"dbc2vss": {"signal": "Kmh"}}})")
        << "car.json: expected the path of a measured value with a signal of ";
}

void tst_EcuBroadcast::unusable()
{
    QFETCH(QByteArray, dbc);
    QFETCH(QByteArray, map);
    QFETCH(QString, message);
    const QTemporaryDir folder;
    const auto write = [&folder](const char *name, const QByteArray &content) {
        QFile file(folder.filePath(name));
        if (!content.isEmpty() && file.open(QIODevice::WriteOnly))
            file.write(content);
        return file.fileName();
    };
    QString error;
    QVERIFY(!Broadcaster::open({write("car.dbc", dbc), write("car.json", map)}, &error));
    QVERIFY2(error.startsWith(folder.filePath(message)), qPrintable(error));
}

NORDA_TEST_MAIN(tst_EcuBroadcast)
#include "tst_ecubroadcast.moc"
