#include "simulator/simulatedcar.h"
#include "testmain.h"
#include "testpaths.h"

using namespace module;

/** The simulated car in somebody's hands: what is held is said, what is let go of goes as before.
 */
class tst_Controls : public QObject
{
    Q_OBJECT
private slots:
    void reads_data();
    void reads();
    void readsColdTemperatures();
    void areDocumented();
    void refuses_data();
    void refuses();
    void isSaid_data();
    void isSaid();
    void engineAndSpeed();
    void released_data();
    void released();
    void lampsFollowTheEngine();
    void propertiesHaveTheTemperatures();
    void tiresFollowTheOutside();
    void doorWarnsWhileDriving();
    void promptSpeaksOnce();
    void obstacleGoesAgain();
    void trimChangesUnderway();
};

/** Drives a car for some seconds. @return what it said */
static QVector<Emission> drive(SimulatedCar *car, qint64 *nowMs, int seconds)
{
    QVector<Emission> said;
    *nowMs += seconds * 1000;
    while (car->nextDueMs() >= 0 && car->nextDueMs() <= *nowMs)
        said.append(car->take());
    return said;
}

/** The arguments of the last of a signal, as text. */
static QString lastOf(const QVector<Emission> &said, const QByteArray &signal)
{
    for (int i = said.size() - 1; i >= 0; --i) {
        if (said[i].signal != signal)
            continue;
        QStringList texts;
        for (const QVariant &argument : said[i].arguments) {
            texts.append(argument.userType() == QMetaType::UChar ? QString::number(argument.toInt())
                         : argument.userType() == QMetaType::QByteArray
                             ? QString::fromLatin1(argument.toByteArray().toHex())
                         : argument.canConvert<QStringList>()
                             ? argument.toStringList().join(QLatin1Char('/'))
                             : argument.toString());
        }
        return texts.join(QLatin1Char(' '));
    }
    return QStringLiteral("never");
}

void tst_Controls::reads_data()
{
    QTest::addColumn<QString>("text");
    for (int i = 0; i < Controls::Count; ++i) {
        const Controls::Row &row = Controls::row(Controls::Control(i));
        const QStringList words = Controls::words(Controls::Control(i));
        const QString last = words.isEmpty() ? QString::number(row.highest) : words.constLast();
        QTest::newRow(row.name) << last;
    }
}

void tst_Controls::readsColdTemperatures()
{
    Controls::Control control = Controls::Count;
    int value = 0;
    QString error;
    for (const int degrees : {-40, -1, 0}) {
        QVERIFY(Controls::read("outside-temperature", QString::number(degrees), &control, &value,
                               &error));
        QCOMPARE(value, degrees);
        QCOMPARE(Controls::textOf(control, value), QString::number(degrees));
    }
}

void tst_Controls::reads()
{
    QFETCH(QString, text);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    Controls::Control control = Controls::Count;
    int value = 0;
    QString error;
    QVERIFY(Controls::read(name, text, &control, &value, &error));
    QCOMPARE(value, Controls::row(control).highest);
    QCOMPARE(Controls::textOf(control, value), text);
    QVERIFY(Controls::read(name, QStringLiteral("auto"), &control, &value, &error));
    QCOMPARE(value, int(Controls::Automatic));
    QCOMPARE(error, QString());
}

void tst_Controls::areDocumented()
{
    QFile file(QDir(testpaths::sourceFolder()).filePath("docs/scenarios.md"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    for (int i = 0; i < Controls::Count; ++i) {
        const Controls::Row &row = Controls::row(Controls::Control(i));
        QVERIFY2(text.contains(QStringLiteral("`%1`").arg(QLatin1String(row.name))), row.name);
    }
}

void tst_Controls::refuses_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");
    QTest::newRow("unknown") << "wing"
                             << "open"
                             << "expected one of engine, speed, ";
    QTest::newRow("word") << "hood"
                          << "ajar"
                          << "expected hood with closed, open or auto, got 'ajar'";
    QTest::newRow("too fast") << "speed"
                              << "126"
                              << "expected speed with a number from 0 to 125 or auto, got '126'";
    QTest::newRow("too cold") << "outside-temperature"
                              << "-41"
                              << "expected outside-temperature with a number from -40 to 140 or "
                                 "auto, got '-41'";
    QTest::newRow("gear") << "gear"
                          << "d7"
                          << "expected gear with park, reverse, d1, d2, d3, d4, d5, d6 or auto, "
                             "got 'd7'";
    QTest::newRow("no number") << "tire-rear-left"
                               << "soft"
                               << "expected tire-rear-left with a number from 0 to 60 or auto, "
                                  "got 'soft'";
    QTest::newRow("nothing") << "trim"
                             << ""
                             << "expected trim with full, no-rear, manual or auto, got ''";
}

void tst_Controls::refuses()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(QString, message);
    Controls::Control control = Controls::Count;
    int value = 0;
    QString error;
    QVERIFY(!Controls::read(name, text, &control, &value, &error));
    QVERIFY2(error.startsWith(message), qPrintable(error));
}

void tst_Controls::isSaid_data()
{
    QTest::addColumn<int>("control");
    QTest::addColumn<int>("value");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QString>("held");
    QTest::addColumn<QString>("letGo"); // nothing where the trip would not say it again
    const auto row = [](const char *name, int control, int value, const char *signal,
                        const char *held, const char *letGo) {
        QTest::newRow(name) << control << value << QByteArray(signal) << QString(held)
                            << QString(letGo);
    };
    row("hood", Controls::Hood, 1, "doorStatus", "1", "0");
    row("trunk", Controls::Trunk, 1, "doorStatus", "2", "0");
    row("front left", Controls::DoorFrontLeft, 1, "doorStatus", "4", "0");
    row("front right", Controls::DoorFrontRight, 1, "doorStatus", "8", "0");
    row("rear left", Controls::DoorRearLeft, 1, "doorStatus", "16", "0");
    row("rear right", Controls::DoorRearRight, 1, "doorStatus", "32", "0");
    row("gear", Controls::Gear, Controls::Reverse, "checkGearPositionStatus", "1", "0");
    row("gear text", Controls::Gear, Controls::Reverse, "gauTopBarTextNotify", "0 mph   R",
        "0 mph   P");
    row("forward", Controls::Gear, Controls::FirstGear + 3, "checkGearPositionStatus", "2", "0");
    row("forward text", Controls::Gear, Controls::FirstGear + 3, "gauTopBarTextNotify",
        "0 mph   D4", "0 mph   P");
    row("lamp", Controls::EngineLamp, 2, "checkEngineStatus", "2", "1");
    row("soft tire", Controls::TireFrontLeft, 17, "tirePressureStatus",
        "33 0 17 psi/34 psi/33 psi/33 psi/0", "never");
    row("soft rear tire", Controls::TireRearRight, 5, "tirePressureStatus",
        "40 0 34 psi/34 psi/5 psi/33 psi/0", "never");
    row("behind, near", Controls::Obstacle + 5, 4, "parkingDistanceRear", "0604", "0700");
    row("behind, far", Controls::Obstacle + 7, 1, "parkingDistanceRear", "0801", "0700");
    row("in front", Controls::Obstacle, 4, "parkingDistanceFront", "dd000000", "00000000");
    row("blind spot", Controls::BlindLeft, 1, "parkingDistanceRear", "0904", "0000");
    row("other blind spot", Controls::BlindRight, 1, "parkingDistanceRear", "0a04", "0000");
}

void tst_Controls::isSaid()
{
    QFETCH(int, control);
    QFETCH(int, value);
    QFETCH(QByteArray, signal);
    QFETCH(QString, held);
    QFETCH(QString, letGo);
    SimulatedCar car;
    qint64 nowMs = 0;
    drive(&car, &nowMs, 20); // standing, the engine runs
    car.controls()->set(Controls::Control(control), value);
    QCOMPARE(lastOf(drive(&car, &nowMs, 2), signal), held);
    car.controls()->set(Controls::Control(control), Controls::Automatic);
    QCOMPARE(lastOf(drive(&car, &nowMs, 2), signal), letGo);
}

void tst_Controls::engineAndSpeed()
{
    SimulatedCar car;
    qint64 nowMs = 0;
    drive(&car, &nowMs, 15);
    car.controls()->set(Controls::Speed, 40);
    QCOMPARE(lastOf(drive(&car, &nowMs, 20), "gauTopBarTextNotify").section(' ', 0, 1),
             QStringLiteral("40 mph"));
    car.controls()->set(Controls::Engine, 0);
    const QVector<Emission> said = drive(&car, &nowMs, 25);
    QCOMPARE(lastOf(said, "centerGaugeValueNotify"), QStringLiteral("0 RPM 0"));
    QCOMPARE(lastOf(said, "gauTopBarTextNotify").section(' ', 0, 0), QStringLiteral("0"));
}

void tst_Controls::released_data()
{
    QTest::addColumn<int>("control");
    QTest::addColumn<int>("value");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QString>("overridden");
    const auto row = [](const char *title, Controls::Control control, int value, const char *signal,
                        const char *overridden) {
        QTest::newRow(title) << int(control) << value << QByteArray(signal)
                             << QString::fromUtf8(overridden);
    };
    row("engine speed", Controls::EngineSpeed, 3204, "centerGaugeValueNotify", "3200 RPM 32");
    row("still engine", Controls::EngineSpeed, 0, "centerGaugeValueNotify", "0 RPM 0");
    row("hot coolant", Controls::CoolantTemperature, 262, "gaugeTRValueDualNotify",
        "262 \u2109 250");
    row("cold coolant", Controls::CoolantTemperature, -1, "gaugeTRValueDualNotify", "-1 \u2109 0");
    row("transmission", Controls::TransmissionTemperature, 190, "gaugeTLValueDualNotify",
        "190 \u2109 190");
    row("intake", Controls::IntakeTemperature, 101, "gaugeBLValueDualNotify", "101 \u2109 101");
    row("gear", Controls::Gear, Controls::Reverse, "checkGearPositionStatus", "1");
    row("outside", Controls::OutsideTemperature, -7, "vehTopBarText",
        "Trip 0.0 mi   Outside -7 \u00B0F");
}

/** Released, the signals are at once those of a car that was never overridden. */
void tst_Controls::released()
{
    QFETCH(int, control);
    QFETCH(int, value);
    QFETCH(QByteArray, signal);
    QFETCH(QString, overridden);
    SimulatedCar car;
    SimulatedCar other;
    qint64 nowMs = 0;
    qint64 otherMs = 0;
    drive(&car, &nowMs, 20);
    car.controls()->set(Controls::Control(control), value);
    QCOMPARE(lastOf(drive(&car, &nowMs, 2), signal), overridden);
    car.controls()->set(Controls::Control(control), Controls::Automatic);
    drive(&other, &otherMs, 22);
    QCOMPARE(lastOf(drive(&car, &nowMs, 70), signal), lastOf(drive(&other, &otherMs, 70), signal));
}

/** The last numbers of the vehicle page. */
static QList<int> lastProperties(const QVector<Emission> &said)
{
    for (int i = said.size() - 1; i >= 0; --i) {
        if (said[i].signal == "Properties2TextInfo")
            return said[i].arguments.value(0).value<QList<int>>();
    }
    return {};
}

void tst_Controls::propertiesHaveTheTemperatures()
{
    enum { TopLeft = 2, Coolant, Intake };
    SimulatedCar car;
    qint64 nowMs = 0;
    car.controls()->set(Controls::CoolantTemperature, 230);
    car.controls()->set(Controls::IntakeTemperature, 99);
    car.controls()->set(Controls::OilTemperature, 251);
    car.controls()->set(Controls::TransmissionTemperature, 174);
    const auto press = [&car, &nowMs] { // the next temperature on the top left gauge
        car.command(nowMs, "norda::VtqAdaptor::gaugeTLMenu", {1});
    };
    QList<int> properties = lastProperties(drive(&car, &nowMs, 5));
    QCOMPARE(properties.mid(TopLeft, 3), QList<int>({174, 230, 99}));
    press();
    properties = lastProperties(drive(&car, &nowMs, 5));
    QCOMPARE(properties.mid(TopLeft, 3), QList<int>({251, 230, 99}));
}

void tst_Controls::lampsFollowTheEngine()
{
    SimulatedCar car;
    qint64 nowMs = 0;
    drive(&car, &nowMs, 20); // the engine is cold
    car.controls()->set(Controls::CoolantTemperature, 180);
    QCOMPARE(lastOf(drive(&car, &nowMs, 1), "peakIndicatorTextNotify"), QStringLiteral("READY"));
    car.controls()->set(Controls::EngineSpeed, 5500);
    const QVector<Emission> said = drive(&car, &nowMs, 1);
    QCOMPARE(lastOf(said, "peakIndicatorTextNotify"), QStringLiteral("SHIFT"));
    QCOMPARE(lastOf(said, "shifterArrowIndicatorNotify"), QStringLiteral("1"));
    car.controls()->set(Controls::CoolantTemperature, Controls::Automatic);
    car.controls()->set(Controls::EngineSpeed, Controls::Automatic);
    QCOMPARE(lastOf(drive(&car, &nowMs, 1), "peakIndicatorNotify"), QStringLiteral("0"));
}

void tst_Controls::tiresFollowTheOutside()
{
    static constexpr int frontLeft = 6;
    SimulatedCar car;
    SimulatedCar other;
    qint64 nowMs = 0;
    qint64 otherMs = 0;
    car.controls()->set(Controls::OutsideTemperature, 120);
    const int warm = lastProperties(drive(&car, &nowMs, 80)).value(frontLeft);
    const int usual = lastProperties(drive(&other, &otherMs, 80)).value(frontLeft);
    QVERIFY2(warm > usual + 10, qPrintable(QStringLiteral("%1 and %2").arg(warm).arg(usual)));
}

void tst_Controls::doorWarnsWhileDriving()
{
    SimulatedCar car;
    qint64 nowMs = 0;
    drive(&car, &nowMs, 80); // in town, at 50
    car.controls()->set(Controls::DoorRearLeft, 1);
    const QVector<Emission> said = drive(&car, &nowMs, 2);
    QCOMPARE(lastOf(said, "vehicleInfoText"), QStringLiteral("Rear left door is open"));
    QCOMPARE(lastOf(said, "audioInterruptNotify"), QStringLiteral("2 3")); // after the tone
}

void tst_Controls::promptSpeaksOnce()
{
    SimulatedCar car;
    qint64 nowMs = 0;
    drive(&car, &nowMs, 20);
    car.controls()->set(Controls::Prompt, 0);
    const QVector<Emission> said = drive(&car, &nowMs, 10);
    int notices = 0;
    for (const Emission &emission : said)
        notices += emission.signal == "audioInterruptNotify";
    QCOMPARE(notices, 2); // it begins and is over
    QVERIFY(!car.controls()->isOverridden(Controls::Prompt));
}

void tst_Controls::obstacleGoesAgain()
{
    SimulatedCar car;
    qint64 nowMs = 0;
    drive(&car, &nowMs, 20);
    car.controls()->set(Controls::Control(Controls::Obstacle + 4), 3);
    QCOMPARE(lastOf(drive(&car, &nowMs, 1), "parkingTopBarText"),
             QStringLiteral("Parking sensors on"));
    car.controls()->set(Controls::Control(Controls::Obstacle + 4), Controls::Automatic);
    QCOMPARE(lastOf(drive(&car, &nowMs, 1), "parkingTopBarText"), QString());
    QCOMPARE(lastOf(drive(&car, &nowMs, 5), "parkingDistanceRear"), QStringLiteral("never"));
}

void tst_Controls::trimChangesUnderway()
{
    SimulatedCar car;
    qint64 nowMs = 0;
    drive(&car, &nowMs, 20);
    car.controls()->set(Controls::ClimateTrim, int(Trim::NoRear));
    const QVector<Emission> said = drive(&car, &nowMs, 1);
    QCOMPARE(lastOf(said, "climateType"), QString());
    QCOMPARE(lastOf(said, "secondclimateType"), QString());
    QVERIFY(lastOf(said, "NordaClimateCtrlStatusNotify") != QStringLiteral("never"));
}

NORDA_TEST_MAIN(tst_Controls)
#include "tst_controls.moc"
