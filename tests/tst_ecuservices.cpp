#include "ecucar.h"
#include "obdpids.h"
#include "services.h"
#include "testmain.h"

using namespace ecu;
using module::Quantity;

/** What a control unit answers, byte by byte. */
class tst_EcuServices : public QObject
{
    Q_OBJECT
private slots:
    void pidBytes_data();
    void pidBytes();
    void answers_data();
    void answers();
    void lampAndCodes_data();
    void lampAndCodes();
    void troubleCodes_data();
    void troubleCodes();
};

void tst_EcuServices::pidBytes_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<double>("value");
    QTest::addColumn<QByteArray>("hex");
    // Conversions of ISO 15031-5, worked out by hand.
    const auto row = [](const char *name, int id, double value, const char *hex) {
        QTest::newRow(name) << id << value << QByteArray(hex);
    };
    row("load 0 %", 0x04, 0, "00");
    row("load 50.2 %", 0x04, 50.2, "80");
    row("load 100 %", 0x04, 100, "ff");
    row("coolant -40 C", 0x05, -40, "00");
    row("coolant 83 C", 0x05, 83, "7b");
    row("coolant 83.6 C, rounded", 0x05, 83.6, "7c");
    row("coolant 215 C", 0x05, 215, "ff");
    row("coolant hotter than it can say", 0x05, 250, "ff");
    row("coolant colder than it can say", 0x05, -50, "00");
    row("manifold pressure 101 kPa", 0x0B, 101, "65");
    row("engine speed 1726 rpm", 0x0C, 1726, "1af8");
    row("engine speed 0.25 rpm", 0x0C, 0.25, "0001");
    row("engine speed 16383.75 rpm", 0x0C, 16383.75, "ffff");
    row("vehicle speed 51 km/h", 0x0D, 51, "33");
    row("intake air -10 C", 0x0F, -10, "1e");
    row("throttle 20 %", 0x11, 20, "33");
    row("fuel level 75 %", 0x2F, 75, "bf");
    row("barometric pressure 100 kPa", 0x33, 100, "64");
    row("catalyst 400 C", 0x3C, 400, "1130");
    row("voltage 13.9 V", 0x42, 13.9, "364c");
    row("ambient 19 C", 0x46, 19, "3b");
    row("oil 96 C", 0x5C, 96, "88");
    row("fuel rate 5.2 L/h", 0x5E, 5.2, "0068");
}

void tst_EcuServices::pidBytes()
{
    QFETCH(int, id);
    QFETCH(double, value);
    QFETCH(QByteArray, hex);
    const module::Pid *pid = module::findPid(quint8(id));
    QVERIFY(pid);
    Car car;
    car.sensors.set(size_t(pid->quantity));
    car.values.set(pid->quantity, value);
    const QByteArray request = QByteArray(1, '\1') + char(id);
    QCOMPARE(answer(car, 0, request, Addressing::Functional).toHex(),
             "41" + request.mid(1).toHex() + hex);
}

void tst_EcuServices::answers_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<int>("unit");
    QTest::addColumn<bool>("physical");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *request, const char *expected, int unit = 0,
                        bool physical = false) {
        QTest::newRow(name) << QByteArray(request) << unit << physical << QByteArray(expected);
    };
    // 01, 04, 05, 0C, 0D, 0F, 1C, and more above 20
    row("what is known from 01", "0100", "4100981a0011");
    row("from 21: nothing but what is above", "0120", "412000000001");
    row("from 41: 42, 46, 5C", "0140", "414044000010");
    row("from 61: no such parameter", "0160", "");
    row("what another unit knows", "0100", "410080080010", 1);
    row("nothing above in another unit", "0120", "", 1);
    row("one", "010C", "410c1af8");
    row("two", "010C0D", "410c1af80d33");
    row("six", "010C0D05040F42", "410c1af80d33057b04660f1e42364c");
    row("seven are too many", "010C0D05040F4246", "");
    row("one of two is not known", "015E0D", "410d33");
    row("one that it has left out", "0146", "");
    row("one without a value now", "015C", "");
    row("one that no quantity feeds", "0110", "");
    row("one that is not known", "015E", "");
    row("one that is not known, asked for itself", "015E", "7f0112", 0, true);
    row("one that another unit leaves to the engine", "010C", "", 1);
    row("the speed from another unit", "010D", "410d33", 1);
    row("without a parameter", "01", "");
    row("which standard", "011C", "411c06");
    row("no lamp, no codes", "0101", "410100070000");
    row("no stored codes", "03", "4300");
    row("no stored codes in another unit", "03", "4300", 1);
    row("stored codes with a parameter", "0300", "");
    row("what of the vehicle is known", "0900", "490040000000");
    row("identification number", "0902", "4902014e52444154455354303030303030303031");
    row("identification number of another unit", "0902", "", 1);
    row("calibration", "0904", "");
    row("calibration, asked for itself", "0904", "7f0912", 0, true);
    row("unknown service", "22F190", "");
    row("unknown service, asked for itself", "22F190", "7f2211", 0, true);
    row("nothing", "", "");
}

void tst_EcuServices::answers()
{
    QFETCH(QByteArray, request);
    QFETCH(int, unit);
    QFETCH(bool, physical);
    QFETCH(QByteArray, expected);
    Car car = testCar();
    car.values.forget(Quantity::OilTemperature);
    car.missingPids = {0x46};
    if (request == "0140")
        car.missingPids.clear();
    QCOMPARE(answer(car, unit, QByteArray::fromHex(request),
                    physical ? Addressing::Physical : Addressing::Functional)
                 .toHex(),
             expected);
}

void tst_EcuServices::lampAndCodes_data()
{
    QTest::addColumn<QStringList>("codes");
    QTest::addColumn<int>("unit");
    QTest::addColumn<QByteArray>("status");
    QTest::addColumn<QByteArray>("stored");
    QTest::newRow("one") << QStringList{"P0304"} << 0 << QByteArray("410181070000")
                         << QByteArray("43010304");
    QTest::newRow("three") << QStringList{"P0304", "C1A2B", "U0100"} << 0
                           << QByteArray("410183070000") << QByteArray("430303045a2bc100");
    QTest::newRow("another unit") << QStringList{"P0304"} << 1 << QByteArray("410100070000")
                                  << QByteArray("4300");
}

void tst_EcuServices::lampAndCodes()
{
    QFETCH(QStringList, codes);
    QFETCH(int, unit);
    QFETCH(QByteArray, status);
    QFETCH(QByteArray, stored);
    Car car = testCar();
    car.faultCodes = codes;
    car.hasFault = true;
    QCOMPARE(answer(car, unit, QByteArray::fromHex("0101"), Addressing::Functional).toHex(),
             status);
    QCOMPARE(answer(car, unit, QByteArray::fromHex("03"), Addressing::Functional).toHex(), stored);
}

void tst_EcuServices::troubleCodes_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QByteArray>("hex"); // empty for what is none
    const auto row = [](const char *code, const char *hex) {
        QTest::newRow(code) << QString::fromLatin1(code) << QByteArray(hex);
    };
    row("P0000", "0000");
    row("P0304", "0304");
    row("P1ABC", "1abc");
    row("C0123", "4123");
    row("B2345", "a345");
    row("U3FFF", "ffff");
    row("P4000", "");
    row("X0304", "");
    row("P030", "");
    row("P03045", "");
    row("p0304", "");
}

void tst_EcuServices::troubleCodes()
{
    QFETCH(QString, code);
    QFETCH(QByteArray, hex);
    QCOMPARE(troubleCodeBytes(code).toHex(), hex);
}

NORDA_TEST_MAIN(tst_EcuServices)
#include "tst_ecuservices.moc"
