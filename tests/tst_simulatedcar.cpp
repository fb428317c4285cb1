#include "calllog.h"
#include "drive.h"
#include "norda/vtqadaptor.h"
#include "recording.h"
#include "simulator/simulatedcar.h"
#include "snapshot.h"
#include "testmain.h"

#include <QCryptographicHash>

using namespace module;

static QString line(const Emission &emission)
{
    QStringList arguments;
    for (const QVariant &argument : emission.arguments) {
        QString text;
        QDebug(&text).noquote().nospace() << argument;
        arguments.append(text);
    }
    return QStringLiteral("%1 %2 %3")
        .arg(emission.atMs)
        .arg(QString::fromLatin1(emission.signal), arguments.join(QLatin1Char(' ')));
}

static QStringList wholeTrip(SimulatedCar *car)
{
    QStringList lines;
    while (car->nextDueMs() >= 0)
        lines.append(line(car->take()));
    return lines;
}

/** The simulated car and the clock that drives it. */
class tst_SimulatedCar : public QObject
{
    Q_OBJECT
private slots:
    void drivesTheSameTripEveryTime();
    void signalsOfQuantities_data();
    void signalsOfQuantities();
    void tripIsPlausible();
    void emissionsAreInOrder();
    void seekLeadsToTheSameState();
    void answersTouches_data();
    void answersTouches();
    void resendsItsState();
    void sameSignalsAtAnySpeed();
    void driveStopsAtItsLimit();
    void driveSleepsUntilSomethingIsDue();
    void pauseStopsTheClock();
    void commandsReachTheCar();
};

void tst_SimulatedCar::drivesTheSameTripEveryTime()
{
    SimulatedCar first;
    SimulatedCar second;
    const QStringList trip = wholeTrip(&first);
    QVERIFY(trip.size() > 3000);
    QCOMPARE(wholeTrip(&second), trip);
    first.seek(0);
    QCOMPARE(wholeTrip(&first).size(), trip.size());
}

void tst_SimulatedCar::signalsOfQuantities_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QByteArray>("digest");
    const auto row = [](const char *signal, int count, const char *digest) {
        QTest::newRow(signal) << count << QByteArray(digest);
    };
    row("centerGaugeValueNotify", 1278, "a405b45d");
    row("gauTopBarTextNotify", 488, "7a562660");
    row("gaugeTLValueDualNotify", 102, "c9931bcd");
    row("gaugeTRValueDualNotify", 163, "529bceae");
    row("gaugeBLValueDualNotify", 54, "2f04a1a4");
    row("gaugeBRValueDualNotify", 2978, "85443176");
    row("checkGearPositionStatus", 15, "2cb19010");
    row("tirePressureStatus", 35, "1b092779");
    row("tireTemperatureStatus", 364, "9dcd122e");
    row("doorStatus", 19, "dcde322c");
    row("checkEngineStatus", 4, "dc0a7acf");
    row("Properties2TextInfo", 601, "439d1bf2");
    row("batteryVoltage", 821, "c561a334");
    row("parkingDistanceRear", 58, "dcdcccc0");
    row("parkingDistanceFront", 23, "a0e92c5c");
}

// To the bit and the millisecond: whoever changes how quantities become signals means to.
void tst_SimulatedCar::signalsOfQuantities()
{
    QFETCH(int, count);
    QFETCH(QByteArray, digest);
    static const QStringList trip = [] {
        SimulatedCar car;
        return wholeTrip(&car);
    }();
    const QString name = QStringLiteral(" %1 ").arg(QLatin1String(QTest::currentDataTag()));
    const QStringList lines = trip.filter(name);
    QCOMPARE(lines.size(), count);
    const QByteArray text = lines.join(QLatin1Char('\n')).toUtf8();
    QCOMPARE(QCryptographicHash::hash(text, QCryptographicHash::Sha1).toHex().left(8), digest);
}

void tst_SimulatedCar::tripIsPlausible()
{
    SimulatedCar car;
    int highestRpm = 0;
    int lastRpm = -1;
    int coolant = 0;
    double lowestVolts = 99;
    bool shifted = false;
    while (car.nextDueMs() >= 0) {
        const Emission emission = car.take();
        const QVariant first = emission.arguments.value(0);
        if (emission.signal == "centerGaugeValueNotify") {
            lastRpm = first.toInt();
            highestRpm = qMax(highestRpm, lastRpm);
        } else if (emission.signal == "gaugeTRValueDualNotify") {
            coolant = first.toInt();
            QVERIFY(coolant >= 60 && coolant < 235);
        } else if (emission.signal == "batteryVoltage") {
            const QString text = first.toString();
            lowestVolts = qMin(lowestVolts, text.left(text.size() - 1).toDouble());
        } else if (emission.signal == "shifterArrowIndicatorNotify") {
            shifted |= first.toInt() == 1;
        }
    }
    QVERIFY2(highestRpm > 5000 && highestRpm < 7000, qPrintable(QString::number(highestRpm)));
    QCOMPARE(lastRpm, 0);
    QVERIFY2(coolant > 170, qPrintable(QString::number(coolant)));
    QVERIFY2(lowestVolts < 11 && lowestVolts > 9, qPrintable(QString::number(lowestVolts)));
    QVERIFY(shifted);
}

void tst_SimulatedCar::emissionsAreInOrder()
{
    SimulatedCar car;
    qint64 last = 0;
    while (car.nextDueMs() >= 0) {
        const qint64 due = car.nextDueMs();
        QCOMPARE(car.take().atMs, due);
        QVERIFY(due >= last);
        last = due;
    }
    QVERIFY(last <= car.durationMs());
}

void tst_SimulatedCar::seekLeadsToTheSameState()
{
    // What a screen shows after driving to a moment and after jumping there is the same.
    static constexpr qint64 moment = 300000;
    SimulatedCar driven;
    Snapshot<QString> shown;
    while (driven.nextDueMs() < moment) {
        const Emission emission = driven.take();
        shown.add(emission.signal, emission.arguments,
                  line({moment, emission.signal, emission.arguments}));
    }
    SimulatedCar jumped;
    jumped.seek(moment);
    QStringList caughtUp;
    for (int i = 0; i < shown.items().size(); ++i)
        caughtUp.append(line(jumped.take()));
    QCOMPARE(caughtUp, QStringList(shown.items().toList()));
    // The zones are clear, though what was said last is about the blind spots.
    QCOMPARE(caughtUp.filter("parkingDistanceRear").size(), 2);
    // And both go on alike.
    QCOMPARE(line(jumped.take()), line(driven.take()));
}

void tst_SimulatedCar::answersTouches_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QVariantList>("arguments");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("contains");
    const QString adaptor = QStringLiteral("norda::VtqAdaptor::");
    QTest::newRow("top left gauge") << adaptor + "gaugeTLMenu" << QVariantList{1}
                                    << QByteArray("gaugeTitlesNotify") << "Oil Temp";
    QTest::newRow("centre gauge") << adaptor + "centerGaugeMenu" << QVariantList{1}
                                  << QByteArray("gaugeGraphicalSettingNotify") << "";
    QTest::newRow("second preset") << adaptor + "gaugesCustomControls" << QVariantList{0x22, 1}
                                   << QByteArray("activePresetStatusNotify") << "1";
    QTest::newRow("version page") << adaptor + "NordaData_Request" << QVariantList{5}
                                  << QByteArray("NordaVerInfo") << "12";
    QTest::newRow("release of a gauge")
        << adaptor + "gaugeTLMenu" << QVariantList{2} << QByteArray() << "";
    QTest::newRow("a service call") << QStringLiteral("norda::VtqService::setClimateRearZone")
                                    << QVariantList{true} << QByteArray() << "";
}

void tst_SimulatedCar::answersTouches()
{
    QFETCH(QString, operation);
    QFETCH(QVariantList, arguments);
    QFETCH(QByteArray, answer);
    QFETCH(QString, contains);
    SimulatedCar car;
    while (car.nextDueMs() < 20000)
        car.take();
    SimulatedCar untouched;
    while (untouched.nextDueMs() < 20000)
        untouched.take();

    car.command(20000, operation, arguments);
    QStringList extra;
    QSet<QString> usual;
    while (untouched.nextDueMs() >= 0 && untouched.nextDueMs() <= 20100)
        usual.insert(line(untouched.take()));
    while (car.nextDueMs() >= 0 && car.nextDueMs() <= 20050) {
        const QString said = line(car.take());
        if (!usual.contains(said))
            extra.append(said);
    }
    if (answer.isEmpty()) {
        QCOMPARE(extra, QStringList());
        return;
    }
    const QStringList answers = extra.filter(QString::fromLatin1(answer));
    QCOMPARE(answers.size(), 1);
    QVERIFY2(answers[0].contains(contains), qPrintable(answers[0]));
}

void tst_SimulatedCar::resendsItsState()
{
    SimulatedCar car;
    QSet<QByteArray> said;
    while (car.nextDueMs() < 100000)
        said.insert(car.take().signal);
    car.command(100000, QStringLiteral("norda::VtqAdaptor::requestGaugesInfo"), {});
    QSet<QByteArray> resent;
    while (car.nextDueMs() <= 100050)
        resent.insert(car.take().signal);
    for (const char *name :
         {"gaugeTitlesNotify", "centerGaugeValueNotify", "gaugeTLValueDualNotify",
          "gaugeTRValueDualNotify", "gaugeBLValueDualNotify", "gaugeBRValueDualNotify",
          "gauTopBarTextNotify", "peakIndicatorNotify", "gauCustomControlLabelsNotify",
          "activePresetStatusNotify"}) {
        QVERIFY2(said.contains(name), name);
        QVERIFY2(resent.contains(name), name);
    }
}

/** Everything that reaches the adaptor while a drive runs. */
static QStringList driveAt(double speed, qint64 limitMs)
{
    QStringList lines;
    Drive drive(std::make_unique<SimulatedCar>());
    const QMetaObject::Connection titles =
        QObject::connect(norda::VtqAdaptor::instance(), &norda::VtqAdaptor::centerGaugeValueNotify,
                         &drive, [&](const QString &value, const QString &, uchar) {
                             lines.append(QString::number(drive.positionMs()) + ' ' + value);
                         });
    QSignalSpy finished(&drive, &Drive::finished);
    drive.setSpeed(speed);
    drive.setLimit(limitMs);
    drive.play();
    if (!finished.wait(20000))
        lines.clear();
    return lines;
}

void tst_SimulatedCar::sameSignalsAtAnySpeed()
{
    const QStringList fast = driveAt(Drive::Unlimited, 20000);
    QVERIFY2(fast.size() > 20, qPrintable(QString::number(fast.size())));
    QCOMPARE(driveAt(50, 20000), fast);
    QCOMPARE(driveAt(13, 20000), fast);
}

void tst_SimulatedCar::driveStopsAtItsLimit()
{
    Drive drive(std::make_unique<SimulatedCar>());
    drive.setSpeed(Drive::Unlimited);
    drive.setLimit(7300);
    QCOMPARE(drive.durationMs(), 7300);
    QSignalSpy finished(&drive, &Drive::finished);
    drive.play();
    QVERIFY(finished.wait());
    QCOMPARE(drive.positionMs(), 7300);
    QVERIFY(!drive.isPlaying());
}

/** A source with one signal far away. */
class QuietSource : public VehicleSource
{
public:
    QString title() const override { return QStringLiteral("quiet"); }
    qint64 durationMs() const override { return 60000; }
    qint64 nextDueMs() const override { return m_said ? -1 : 800; }
    Emission take() override
    {
        m_said = true;
        return {800, "doorStatus", {1}};
    }
    void seek(qint64) override {}

private:
    bool m_said = false;
};

void tst_SimulatedCar::driveSleepsUntilSomethingIsDue()
{
    Drive drive(std::make_unique<QuietSource>());
    QSignalSpy moved(&drive, &Drive::positionChanged);
    QSignalSpy doors(norda::VtqAdaptor::instance(), &norda::VtqAdaptor::doorStatus);
    drive.play();
    QTest::qWait(500);
    QCOMPARE(moved.count(), 0);
    QCOMPARE(doors.count(), 0);
    QVERIFY(doors.wait(60000));
    QCOMPARE(moved.count(), 1);
}

void tst_SimulatedCar::pauseStopsTheClock()
{
    Drive drive(std::make_unique<SimulatedCar>());
    drive.setSpeed(10);
    drive.play();
    QTRY_VERIFY(drive.positionMs() > 500);
    drive.pause();
    const qint64 position = drive.positionMs();
    QTest::qWait(300);
    QCOMPARE(drive.positionMs(), position);
    drive.play();
    QTRY_VERIFY(drive.positionMs() > position);
    QVERIFY(drive.positionMs() < position + 2500); // the pause itself was not driven
}

void tst_SimulatedCar::commandsReachTheCar()
{
    Drive drive(std::make_unique<SimulatedCar>());
    QSignalSpy titles(norda::VtqAdaptor::instance(), &norda::VtqAdaptor::gaugeTitlesNotify);
    drive.play();
    QTRY_COMPARE(titles.count(), 1);
    norda::VtqAdaptor::instance()->gaugeTLMenu(1);
    QTRY_COMPARE(titles.count(), 2);
    QCOMPARE(titles[1][0].toStringList()[1], QStringLiteral("Oil Temp"));
}

NORDA_TEST_MAIN(tst_SimulatedCar)
#include "tst_simulatedcar.moc"
