#include "pagesignals.h"

#include "simulator/emissionqueue.h"
#include "units.h"
#include "unknownvalues.h"
#include "wire.h"

#include <QStringList>
#include <QtMath>

#include <algorithm>
#include <array>

namespace module {

static const QString unknownText = QStringLiteral("--");
static constexpr int corners = 4; // of a car

static double roundedTo(double value, int highest)
{
    return qBound(0, qRound(value), highest);
}

// ---- Gauges -------------------------------------------------------------------------------------

static QVariantList engineSpeed(const CarState &car)
{
    const double rpm = car.value(Quantity::EngineSpeed);
    return {QString::number(qFloor(rpm)), QStringLiteral("RPM"),
            byte(int(roundedTo(rpm / 100, 100)))};
}

static QVariantList engineSpeedInTens(const CarState &car)
{
    const int rpm = qRound(car.value(Quantity::EngineSpeed) / 10) * 10;
    return {QString::number(rpm), QStringLiteral("RPM"), byte(qMin(100, rpm / 100))};
}

static QVariantList cornerOf(const CarState &car, Quantity quantity, int fullScale)
{
    const double shown = shownValue(quantity, car.value(quantity));
    return {QString::number(qRound(shown)), shownUnit(quantity),
            byte(int(roundedTo(shown, fullScale)))};
}

static constexpr int hottest = 250;

template <Quantity quantity, int fullScale = hottest>
static QVariantList corner(const CarState &car)
{
    return cornerOf(car, quantity, fullScale);
}

const QVector<Quantity> topLeftTemperatures = {
    Quantity::TransmissionTemperature, Quantity::OilTemperature, Quantity::AmbientTemperature};

static QVariantList topLeft(const CarState &car)
{
    return car.knows(car.topLeft()) ? cornerOf(car, car.topLeft(), hottest) : QVariantList();
}

QVariantList gaugeTitles(const CarState &car)
{
    static const QStringList topLeftTitles = {QStringLiteral("Transmission Temp"),
                                              QStringLiteral("Oil Temp"),
                                              QStringLiteral("Ambient Temp")};
    return {QStringList{QStringLiteral("Tachometer"),
                        topLeftTitles.value(topLeftTemperatures.indexOf(car.topLeft())),
                        QStringLiteral("Coolant Temp"), QStringLiteral("Intake Air Temp"),
                        QStringLiteral("Engine Calculated Load")}};
}

static QVariantList speed(const CarState &car)
{
    const double kmh = car.value(Quantity::VehicleSpeed);
    return {QStringLiteral("%1 km/h   %2 mph").arg(qRound(kmh)).arg(qRound(miles(kmh)))};
}

static QVariantList speedAndGear(const CarState &car)
{
    const int gear = qRound(car.value(Quantity::Gear));
    const QString position = gear < 0    ? QStringLiteral("R")
                             : gear == 0 ? QStringLiteral("P")
                                         : QStringLiteral("D%1").arg(gear);
    const int mph = qRound(miles(car.value(Quantity::VehicleSpeed)));
    return {QStringLiteral("%1 mph   %2").arg(mph).arg(position)};
}

// ---- Vehicle ------------------------------------------------------------------------------------

/** Five characters are shown. */
static QVariantList battery(const CarState &car)
{
    return {QString::number(car.value(Quantity::Voltage), 'f', 1) + QLatin1Char('V')};
}

/** What is unknown counts as closed: the page has no other way to draw it. */
static int openBits(const CarState &car)
{
    static constexpr int count = 6;
    int bits = 0;
    for (int i = 0; i < count; ++i)
        bits |= car.isOn(Quantity::HoodOpen + i) ? 1 << i : 0;
    return bits;
}

static QVariantList openings(const CarState &car)
{
    return {byte(openBits(car))};
}

// The bits of the tires in the order of the quantities, around the car.
static constexpr int tireBits[corners] = {wire::TireFrontLeft, wire::TireFrontRight,
                                          wire::TireRearRight, wire::TireRearLeft};

/** By the car's own warning or, where it has none, by the tire beside it on the same axle. */
static bool isSoft(const CarState &car, int tire)
{
    static constexpr int beside[corners] = {1, 0, 3, 2};
    static constexpr double normalShare = 0.8;
    if (car.knows(Quantity::TireLowFrontLeft + tire))
        return car.isOn(Quantity::TireLowFrontLeft + tire);
    const double own = car.value(Quantity::TirePressureFrontLeft + tire);
    const double other = car.value(Quantity::TirePressureFrontLeft + beside[tire]);
    return own < other * normalShare; // false where one of them is unknown
}

/** Far hotter than the coolest of the four. */
static bool isHot(const CarState &car, int tire)
{
    static constexpr double normalSpread = 25; // degrees Celsius
    const double own = car.value(Quantity::TireTemperatureFrontLeft + tire);
    for (int other = 0; other < corners; ++other) {
        if (own > car.value(Quantity::TireTemperatureFrontLeft + other) + normalSpread)
            return true;
    }
    return false;
}

template <typename Warns>
static QVariant tireFlags(Warns warns)
{
    int flags = wire::TireTextsValid;
    for (int tire = 0; tire < corners; ++tire)
        flags |= warns(tire) ? tireBits[tire] : 0;
    return byte(flags);
}

static QVariantList tirePressures(const CarState &car)
{
    QStringList texts;
    for (int tire = 0; tire < corners; ++tire) {
        const Quantity pressure = Quantity::TirePressureFrontLeft + tire;
        texts.append(car.knows(pressure) ? QStringLiteral("%1 psi").arg(
                                               qRound(car.value(pressure) / kilopascalPerPsi))
                                         : unknownText);
    }
    texts.append(QString::number(car.isOn(Quantity::EngineLamp)));
    const auto soft = [&car](int tire) { return isSoft(car, tire); };
    return {tireFlags(soft), byte(0), texts};
}

static int tireFahrenheit(const CarState &car, int tire)
{
    return qRound(fahrenheit(car.value(Quantity::TireTemperatureFrontLeft + tire)));
}

/** The simulated car knows no spread. */
static bool isWarm(const CarState &car, int tire)
{
    static constexpr int warmFahrenheit = 100;
    return tireFahrenheit(car, tire) >= warmFahrenheit;
}

/** From left to right. Pressures are shown white whatever their flags, so it marks soft tires. */
template <bool (*isTooHot)(const CarState &car, int tire)>
static QVariantList tireTemperatures(const CarState &car)
{
    QStringList texts;
    for (const int tire : {0, 1, 3, 2}) {
        texts.append(car.knows(Quantity::TireTemperatureFrontLeft + tire)
                         ? QString::number(tireFahrenheit(car, tire)) + QLatin1Char('F')
                         : unknownText);
    }
    const auto warns = [&car](int tire) { return isSoft(car, tire) || isTooHot(car, tire); };
    return {tireFlags(warns), byte(0), texts};
}

static QVariantList engineLamp(const CarState &car)
{
    return {byte(car.isOn(Quantity::EngineLamp) ? wire::EngineFault : wire::EngineFine)};
}

/** A bit for each belt that is known to be open. */
static QVariantList belts(const CarState &car)
{
    const bool driver = car.valueOr(Quantity::BeltDriver, 1) < 0.5;
    const bool passenger = car.valueOr(Quantity::BeltPassenger, 1) < 0.5;
    return {byte(driver + 2 * passenger)};
}

/** The signal has no neutral: that is shown as park is. */
static QVariantList gear(const CarState &car)
{
    static constexpr int parkGear = 126;
    const int gear = qRound(car.valueOr(Quantity::Gear, 0));
    if (car.isOn(Quantity::ParkLock) || gear == 0 || gear == parkGear)
        return {byte(wire::Park)};
    return {byte(gear < 0 ? wire::Reverse : wire::Drive)};
}

static QVariantList heading(const CarState &car)
{
    static constexpr const char *points[] = {"N", "NE", "E", "SE", "S", "SW", "W", "NW"};
    static constexpr int count = int(std::size(points));
    const int point = qRound(car.value(Quantity::Heading) * count / 360) % count;
    return {QString::fromLatin1(points[point])};
}

/** Doors, whole volts and temperatures once more, as integers. */
static QVariantList properties(const CarState &car)
{
    const auto rounded = [&car](Quantity quantity) {
        return qRound(shownValue(quantity, car.value(quantity)));
    };
    QList<int> list = {openBits(car),
                       rounded(Quantity::Voltage),
                       rounded(car.topLeft()),
                       rounded(Quantity::CoolantTemperature),
                       rounded(Quantity::IntakeTemperature),
                       rounded(Quantity::EngineLoad)};
    for (int tire = 0; tire < corners; ++tire)
        list.append(tireFahrenheit(car, tire));
    return {QVariant::fromValue(list)};
}

// ---- Parking ------------------------------------------------------------------------------------

static QVariantList obstacleText(const CarState &car)
{
    return {car.isOn(Quantity::ObstacleWarning) ? QStringLiteral("Obstacle") : QString()};
}

// ---- All of them --------------------------------------------------------------------------------

// The pressures carry the lamp's state and take the marks of soft tires away, so both follow them;
// a rear zone clears the front.
// clang-format off
const QVector<PageSignal> pageSignals = {
    {"centerGaugeValueNotify",       Quantity::EngineSpeed,             1, engineSpeed},
    {"gaugeTRValueDualNotify",       Quantity::CoolantTemperature,      1, corner<Quantity::CoolantTemperature>},
    {"gaugeBLValueDualNotify",       Quantity::IntakeTemperature,       1, corner<Quantity::IntakeTemperature>},
    {"gaugeBRValueDualNotify",       Quantity::EngineLoad,              1, corner<Quantity::EngineLoad, 100>},
    {"gaugeTLValueDualNotify",       Quantity::AmbientTemperature,      3, topLeft},
    {"gauTopBarTextNotify",          Quantity::VehicleSpeed,            1, speed},
    {"batteryVoltage",               Quantity::Voltage,                 1, battery},
    {"doorStatus",                   Quantity::HoodOpen,                6, openings},
    {"tirePressureStatus",           Quantity::TirePressureFrontLeft,   8, tirePressures, true},
    {"checkEngineStatus",            Quantity::EngineLamp,              1, engineLamp, true},
    {"tireTemperatureStatus",        Quantity::TirePressureFrontLeft,  12, tireTemperatures<isHot>},
    {"seatbeltStatus",               Quantity::BeltDriver,              2, belts},
    {"checkGearPositionStatus",      Quantity::ParkLock,                2, gear},
    {"compassHeading",               Quantity::Heading,                 1, heading},
    {"NordaClimateCtrlStatusNotify", Quantity::ClimateOn,              20, climateStatus, false, true},
    {"parkingTopBarText",            Quantity::ObstacleWarning,         1, obstacleText},
    {"parkingDistanceRear",          Quantity::ObstacleRearLeft,        6, rearZone, true, true},
    {"parkingDistanceFront",         Quantity::ObstacleFrontLeft,       4, frontDistances, false, true},
};

const QVector<PacedSignal> simulatedGauges = {
    {{"centerGaugeValueNotify",      Quantity::EngineSpeed,             1, engineSpeedInTens}, 100},
    {{"gauTopBarTextNotify",         Quantity::VehicleSpeed,            1, speedAndGear}, 100},
    {{"gaugeTLValueDualNotify",      Quantity::AmbientTemperature,      3, topLeft}},
    {{"gaugeTRValueDualNotify",      Quantity::CoolantTemperature,      1, corner<Quantity::CoolantTemperature>}},
    {{"gaugeBLValueDualNotify",      Quantity::IntakeTemperature,       1, corner<Quantity::IntakeTemperature>}},
    {{"gaugeBRValueDualNotify",      Quantity::EngineLoad,              1, corner<Quantity::EngineLoad, 100>}},
};

const PageSignal batterySignal =
     {"batteryVoltage",              Quantity::Voltage,                 1, battery};
const PageSignal simulatedTireTemperatures =
     {"tireTemperatureStatus",       Quantity::TirePressureFrontLeft,  12, tireTemperatures<isWarm>};
const PageSignal simulatedProperties =
     {"Properties2TextInfo",         Quantity::HoodOpen,                6, properties};

const QVector<PacedSignal> simulatedVehicle = {
    {{"checkGearPositionStatus",     Quantity::ParkLock,                2, gear}},
    {{"tirePressureStatus",          Quantity::TirePressureFrontLeft,   8, tirePressures}},
    {simulatedTireTemperatures},
    {{"doorStatus",                  Quantity::HoodOpen,                6, openings}},
    {{"checkEngineStatus",           Quantity::EngineLamp,              1, engineLamp}},
};
// clang-format on
static_assert(int(Quantity::RearSeatRight) - int(Quantity::ClimateOn) + 1 == 20);
static_assert(int(Quantity::BlindSpotRight) - int(Quantity::ObstacleRearLeft) + 1 == 6);
static_assert(int(Quantity::DoorRearRight) - int(Quantity::HoodOpen) + 1 == 6);
static_assert(int(Quantity::TireTemperatureRearLeft) - int(Quantity::TirePressureFrontLeft) + 1 ==
              12);

Emission emissionOf(const PageSignal &signal, const CarState &car)
{
    const bool isShown = car.knowsAny(signal.first, signal.count) ||
                         (signal.isOffWhenMissing && car.knewAny(signal.first, signal.count));
    const QVariantList arguments = isShown ? signal.arguments(car) : QVariantList();
    return arguments.isEmpty() ? unknownValue(signal.name) : Emission{0, signal.name, arguments};
}

} // namespace module
