#include "adaptorlink.h"
#include "pluginfixture.h"
#include "simulator/simulatedcar.h"
#include "testmain.h"

#include <QLabel>

using namespace module;

static const int openBits = 0x3F;

/** Doors, tires, texts and sensors of the simulated car, as the wire tells them. */
class tst_SimulatedVehicle : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();

    void everythingOpensAtSomeTime();
    void listAndBitsAgree();
    void voltageFollowsTheList();
    void checkEngineLamp();
    void slowPuncture();
    void tiresWarmUpWithSpeed();
    void topBarTextIsNeverLost();
    void noticesComeAndGo();
    void blindSpotsOnTheMotorway();
    void backingUpAndOutAgain();
    void messagesAreSound();
    void resendsInTheOrderOfTheScreen();
    void resendsTheZonesDuringABlindSpot();
    void jumpKeepsTheOrder();
    void pagesShowTheStory();
    void softTireIsSeenToWarn();
    void oneSystemOfUnits();

private:
    QVector<Emission> said(const QByteArray &signal) const
    {
        QVector<Emission> chosen;
        std::copy_if(m_trip.begin(), m_trip.end(), std::back_inserter(chosen),
                     [&signal](const Emission &emission) { return emission.signal == signal; });
        return chosen;
    }
    /** The last of a signal up to a moment. */
    QVariantList at(const QByteArray &signal, qint64 ms) const
    {
        QVariantList arguments;
        for (const Emission &emission : said(signal)) {
            if (emission.atMs <= ms)
                arguments = emission.arguments;
        }
        return arguments;
    }

    QVector<Emission> m_trip;
};

static int number(const QString &text)
{
    return text.section(QRegularExpression(QStringLiteral("[^0-9-]")), 0, 0).toInt();
}

void tst_SimulatedVehicle::initTestCase()
{
    SimulatedCar car;
    while (car.nextDueMs() >= 0)
        m_trip.append(car.take());
}

void tst_SimulatedVehicle::everythingOpensAtSomeTime()
{
    int opened = 0;
    int last = -1;
    for (const Emission &emission : said("doorStatus")) {
        const int bits = emission.arguments[0].toInt();
        QVERIFY(bits != last);
        QCOMPARE(bits & ~openBits, 0);
        opened |= bits;
        last = bits;
    }
    QCOMPARE(opened, openBits);
    QCOMPARE(last, 0);
}

void tst_SimulatedVehicle::listAndBitsAgree()
{
    int bits = 0;
    for (const Emission &emission : m_trip) {
        if (emission.signal == "doorStatus")
            bits = emission.arguments[0].toInt();
        else if (emission.signal == "Properties2TextInfo")
            QCOMPARE(emission.arguments[0].value<QList<int>>()[0], bits);
    }
}

// The list knows whole volts only: a screen that shows both must end with the text.
void tst_SimulatedVehicle::voltageFollowsTheList()
{
    int lists = 0;
    for (int i = 0; i < m_trip.size(); ++i) {
        if (m_trip[i].signal != "Properties2TextInfo")
            continue;
        ++lists;
        QVERIFY(i + 1 < m_trip.size());
        QCOMPARE(m_trip[i + 1].signal, QByteArray("batteryVoltage"));
        QCOMPARE(m_trip[i + 1].atMs, m_trip[i].atMs);
        const int whole = m_trip[i].arguments[0].value<QList<int>>()[1];
        const QString text = m_trip[i + 1].arguments[0].toString();
        QVERIFY(qAbs(text.left(text.size() - 1).toDouble() - whole) <= 0.5);
    }
    QVERIFY(lists > 500);
}

void tst_SimulatedVehicle::checkEngineLamp()
{
    const auto lamp = [this](qint64 ms) { return at("checkEngineStatus", ms).value(0).toInt(); };
    QCOMPARE(lamp(1000), 0);   // before the engine runs nobody knows
    QCOMPARE(lamp(100000), 1); // fine
    QCOMPARE(lamp(400000), 2); // a fault
    QCOMPARE(lamp(599000), 0); // ignition off
    for (const Emission &emission : said("tirePressureStatus"))
        QCOMPARE(emission.arguments[2].toStringList().value(4),
                 QString::number(lamp(emission.atMs) == 2));
}

void tst_SimulatedVehicle::slowPuncture()
{
    // Around the car: front left, front right, rear right, rear left.
    static constexpr int rearRight = 2;
    static constexpr int rearRightFlag = 0x08;
    int lowest = 99;
    for (const Emission &emission : said("tirePressureStatus")) {
        const QStringList texts = emission.arguments[2].toStringList();
        QCOMPARE(texts.size(), 5);
        const int flags = emission.arguments[0].toInt();
        QCOMPARE(flags & 0x20, 0x20);
        for (int tire = 0; tire < 4; ++tire) {
            const int psi = number(texts[tire]);
            QVERIFY(psi > 10 && psi < 42);
            if (tire != rearRight)
                QVERIFY(psi > 30);
        }
        const int psi = number(texts[rearRight]);
        if (psi < 28)
            QCOMPARE(flags & 0x0F, rearRightFlag);
        if (psi > 28)
            QCOMPARE(flags & 0x0F, 0);
        lowest = qMin(lowest, psi);
    }
    QVERIFY2(lowest < 20, qPrintable(QString::number(lowest)));
    QCOMPARE(number(at("tirePressureStatus", 200000)[2].toStringList()[rearRight]) > 32, true);
}

void tst_SimulatedVehicle::tiresWarmUpWithSpeed()
{
    const auto warmth = [this](qint64 ms) {
        int sum = 0;
        for (const QString &text : at("tireTemperatureStatus", ms)[2].toStringList())
            sum += number(text);
        return sum / 4;
    };
    QVERIFY(warmth(20000) < 72);
    QVERIFY(warmth(400000) > warmth(150000) + 15);
    QVERIFY(warmth(599000) < warmth(400000) - 10); // parked
    int soft = 0;                                  // the flags of the tires that are low
    for (const Emission &emission : qAsConst(m_trip)) {
        if (emission.signal == "tirePressureStatus")
            soft = emission.arguments[0].toInt() & 0x0F;
        if (emission.signal != "tireTemperatureStatus")
            continue;
        const QStringList texts = emission.arguments[2].toStringList();
        for (int tire = 0; tire < 4; ++tire) {
            const bool isWarm = number(texts[tire]) >= 100;
            const bool isSoft = soft & (1 << tire);
            QCOMPARE(bool(emission.arguments[0].toInt() & (1 << tire)), isWarm || isSoft);
        }
    }
    // The list has the same temperatures, around the car.
    const QList<int> list = at("Properties2TextInfo", 400000)[0].value<QList<int>>();
    const QStringList texts = at("tireTemperatureStatus", 400000)[2].toStringList();
    QCOMPARE((QList<int>{number(texts[0]), number(texts[1]), number(texts[3]), number(texts[2])}),
             list.mid(6, 4));
}

void tst_SimulatedVehicle::topBarTextIsNeverLost()
{
    bool infoShown = false;
    int texts = 0;
    for (const Emission &emission : m_trip) {
        if (emission.signal == "vehicleInfoText") {
            infoShown = !emission.arguments[0].toString().isEmpty();
        } else if (emission.signal == "vehTopBarText") {
            QVERIFY(!infoShown);
            ++texts;
        }
    }
    QVERIFY(texts > 20);
}

void tst_SimulatedVehicle::noticesComeAndGo()
{
    QStringList notices;
    for (const Emission &emission : said("vehicleInfoText")) {
        notices.append(emission.arguments[0].toString());
        QVERIFY(emission.arguments[0].toString().size() <= 20);
        QVERIFY(emission.arguments[1].toString().size() <= 20);
    }
    QVERIFY(notices.contains(QStringLiteral("Rear right door")));
    QVERIFY(notices.contains(QStringLiteral("Rear right tire")));
    QVERIFY(notices.contains(QStringLiteral("Check engine")));
    QVERIFY(notices.last().isEmpty());
}

void tst_SimulatedVehicle::blindSpotsOnTheMotorway()
{
    QMap<int, int> highest;
    for (const Emission &emission : said("parkingDistanceRear")) {
        const QByteArray message = emission.arguments[0].toByteArray();
        if (message[0] < 9)
            continue;
        QVERIFY(emission.atMs > 230000 && emission.atMs < 440000);
        highest[message[0]] = qMax(highest[message[0]], int(message[1]));
    }
    QCOMPARE(highest, (QMap<int, int>{{9, 4}, {10, 4}}));
    QCOMPARE(at("parkingDistanceRear", 430000)[0].toByteArray(), QByteArray(2, '\0'));
}

void tst_SimulatedVehicle::backingUpAndOutAgain()
{
    QStringList story; // zone and level while the car is backing up, then while it pulls out
    for (const Emission &emission : said("parkingDistanceRear")) {
        const QByteArray message = emission.arguments[0].toByteArray();
        if (emission.atMs > 550000)
            story.append(QStringLiteral("%1:%2").arg(int(message[0])).arg(int(message[1])));
    }
    const QString told = story.join(QLatin1Char(' '));
    // Along the post on the right, then the wall, and out again.
    QVERIFY2(told.contains(QStringLiteral("8:1 8:2 8:3 7:0 7:1 7:2 7:3 7:4 7:3 7:2 7:1 7:0")),
             qPrintable(told));
    const QByteArray front = at("parkingDistanceFront", 599000)[0].toByteArray();
    QVERIFY2(front[0] != 0 && front[3] == 0, front.toHex().constData());

    SimulatedCar car;
    double nearest = 99;
    double sharpest = 0;
    while (car.nextDueMs() >= 0) {
        car.take();
        nearest = qMin(nearest, car.rearView().wall);
        sharpest = qMax(sharpest, qAbs(car.rearView().steeringDegrees));
    }
    QVERIFY2(nearest > 0.2 && nearest < 0.35, qPrintable(QString::number(nearest)));
    QVERIFY2(sharpest > 10, qPrintable(QString::number(sharpest)));
}

void tst_SimulatedVehicle::messagesAreSound()
{
    for (const Emission &emission : said("parkingDistanceRear")) {
        const QByteArray message = emission.arguments[0].toByteArray();
        QCOMPARE(message.size(), 2);
        QVERIFY(message[0] >= 0 && message[0] <= 10);
        QVERIFY(message[1] >= 0 && message[1] <= 4);
    }
    for (const Emission &emission : said("parkingDistanceFront"))
        QCOMPARE(emission.arguments[0].toByteArray().size(), 4);
    for (const Emission &emission : said("Properties2TextInfo"))
        QCOMPARE(emission.arguments[0].value<QList<int>>().size(), 10);
}

static QList<QByteArray> answers(SimulatedCar *car, const char *command)
{
    while (car->nextDueMs() < 590000)
        car->take();
    const QString operation = QStringLiteral("norda::VtqAdaptor::") + QLatin1String(command);
    if (!car->command(590000, operation, {}))
        return {};
    QList<QByteArray> signalNames;
    while (car->nextDueMs() <= 590020)
        signalNames.append(car->take().signal);
    return signalNames;
}

// A zone message behind the car clears the front, so it has to come first.
void tst_SimulatedVehicle::resendsInTheOrderOfTheScreen()
{
    SimulatedCar car;
    const QList<QByteArray> parking = answers(&car, "requestParkingInfo");
    QVERIFY(parking.contains("parkingTopBarText"));
    QVERIFY(parking.indexOf("parkingDistanceRear") >= 0);
    QVERIFY(parking.indexOf("parkingDistanceRear") < parking.indexOf("parkingDistanceFront"));

    SimulatedCar other;
    const QList<QByteArray> vehicle = answers(&other, "requestVehicleInfo");
    for (const char *name : {"doorStatus", "tirePressureStatus", "tireTemperatureStatus",
                             "checkEngineStatus", "vehTopBarText", "vehicleInfoText"})
        QVERIFY2(vehicle.contains(name), name);
    QVERIFY(vehicle.indexOf("Properties2TextInfo") < vehicle.indexOf("batteryVoltage"));
}

void tst_SimulatedVehicle::resendsTheZonesDuringABlindSpot()
{
    static constexpr qint64 overtakenMs = 242000;
    SimulatedCar car;
    while (car.nextDueMs() < overtakenMs)
        car.take();
    QVERIFY(car.command(overtakenMs, QStringLiteral("norda::VtqAdaptor::requestParkingInfo"), {}));
    QList<QByteArray> messages;
    while (car.nextDueMs() <= overtakenMs + VehicleSource::LatestAnswerMs) {
        const Emission emission = car.take();
        if (emission.signal == "parkingDistanceRear" && emission.atMs == overtakenMs + 20)
            messages.append(emission.arguments[0].toByteArray().toHex());
    }
    QCOMPARE(messages, (QList<QByteArray>{"0500", "0904"}));
}

void tst_SimulatedVehicle::jumpKeepsTheOrder()
{
    SimulatedCar car;
    car.seek(589000);
    QList<QByteArray> names;
    while (car.nextDueMs() == 589000)
        names.append(car.take().signal);
    QVERIFY(names.indexOf("parkingDistanceRear") >= 0);
    QVERIFY(names.indexOf("parkingDistanceRear") < names.indexOf("parkingDistanceFront"));
    QVERIFY(names.indexOf("Properties2TextInfo") < names.lastIndexOf("batteryVoltage"));
}

void tst_SimulatedVehicle::pagesShowTheStory()
{
    PluginFixture host;
    QWidget *vehicle = host.open(81);
    QWidget *parking = host.open(83);
    QMetaObject::invokeMethod(parking, "connectVtqAdaptor");
    AdaptorLink link;
    const auto driveTo = [this, &link](qint64 ms) {
        for (const Emission &emission : qAsConst(m_trip)) {
            if (emission.atMs <= ms)
                link.deliver(emission);
        }
    };
    const auto shown = [](QWidget *page, const char *name) {
        return find<QLabel>(page, name)->text();
    };
    const auto shows = [&parking](const char *name, const char *image) {
        const QPixmap wanted(QStringLiteral(":/icon/radaricon/%1.png").arg(QLatin1String(image)));
        return find<QLabel>(parking, name)->pixmap(Qt::ReturnByValue).toImage() == wanted.toImage();
    };
    driveTo(400000);
    QCOMPARE(shown(vehicle, "Txt_carInfo"), QStringLiteral("Rear right tire"));
    QVERIFY(number(shown(vehicle, "Txt_psi_rear_right")) < 28);
    QVERIFY(number(shown(vehicle, "Txt_psi_rear_left")) > 30);
    driveTo(570000);
    QVERIFY(shows("icon_rear_right_mid_radar", "R_D_M_4"));
    QVERIFY(shows("icon_rear_left_radar", "R_U_0"));
    const QRegularExpression nearTheWall(QStringLiteral("^Rear \\d\\.\\d ft$"));
    QVERIFY2(shown(parking, "Txt_fork").contains(nearTheWall),
             qPrintable(shown(parking, "Txt_fork")));
    driveTo(593000);
    QVERIFY(find<QLabel>(vehicle, "icon_hood")->isVisibleTo(vehicle));
    QVERIFY(find<QLabel>(vehicle, "icon_door_front_left")->isVisibleTo(vehicle));
    QVERIFY(!find<QLabel>(vehicle, "icon_door_front_right")->isVisibleTo(vehicle));
    QVERIFY(!shows("icon_front_left_radar", "F_U_0"));
}

// Cool tires: what warns is the pressure, and it does so after the list of integers, too.
void tst_SimulatedVehicle::softTireIsSeenToWarn()
{
    const QString yellow = QStringLiteral("color: rgb(248, 255, 55);");
    PluginFixture host;
    QWidget *vehicle = host.open(81);
    AdaptorLink link;
    SimulatedCar car;
    const auto driveTo = [&car, &link](qint64 ms) {
        while (car.nextDueMs() <= ms)
            link.deliver(car.take());
    };
    const auto warning = [vehicle, &yellow] {
        QStringList places;
        for (const char *place : {"front_left", "front_right", "rear_left", "rear_right"}) {
            const QByteArray name = QByteArray("Txt_temp_") + place;
            if (find<QLabel>(vehicle, name)->styleSheet() == yellow)
                places.append(QLatin1String(place));
        }
        return places;
    };
    driveTo(20000);
    QCOMPARE(warning(), QStringList());
    car.controls()->set(Controls::TireRearRight, 17);
    for (const int ms : {21000, 22000, 22900, 30000}) {
        driveTo(ms);
        QCOMPARE(warning(), QStringList{"rear_right"});
        QVERIFY(number(find<QLabel>(vehicle, "Txt_temp_rear_right")->text()) < 100);
    }
    car.controls()->set(Controls::TireRearRight, 34);
    driveTo(32000);
    QCOMPARE(warning(), QStringList());
}

void tst_SimulatedVehicle::oneSystemOfUnits()
{
    const QRegularExpression metric(QStringLiteral("\\d ?(km|m|cm|kPa|bar|\u00B0?C|l)\\b"));
    QSet<QString> units;
    for (const Emission &emission : qAsConst(m_trip)) {
        for (const QVariant &argument : emission.arguments) {
            const QString text = argument.toStringList().join(QLatin1Char(' '));
            QVERIFY2(!text.contains(metric), qPrintable(text));
            for (const char *unit : {" mph ", " mi ", " \u00B0F", " psi", " ft"}) {
                if (text.contains(QString::fromUtf8(unit)))
                    units.insert(QString::fromUtf8(unit));
            }
        }
    }
    QCOMPARE(units.size(), 5);
    QVERIFY(at("vehTopBarText", 0)[0].toString().endsWith(QString::fromUtf8("Outside 66 \u00B0F")));
}

NORDA_TEST_MAIN(tst_SimulatedVehicle)
#include "tst_simulatedvehicle.moc"
