#include "simulator/simulatedcar.h"
#include "testmain.h"

using namespace module;

/** The simulated car in somebody's hands: what is held is said, what is let go of goes as before.
 */
class tst_Controls : public QObject
{
    Q_OBJECT
private slots:
    void reads_data();
    void reads();
    void refuses_data();
    void refuses();
    void isSaid_data();
    void isSaid();
    void engineAndSpeed();
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
