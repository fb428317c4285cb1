#include "pagesignals.h"

#include "simulator/emissionqueue.h"
#include "units.h"
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

template <Quantity quantity, int fullScale>
static QVariantList corner(const CarState &car)
{
    const double shown = shownValue(quantity, car.value(quantity));
    return {QString::number(qRound(shown)), shownUnit(quantity),
            byte(int(roundedTo(shown, fullScale)))};
}

static QVariantList speed(const CarState &car)
{
    const double kmh = car.value(Quantity::VehicleSpeed);
    return {QStringLiteral("%1 km/h   %2 mph").arg(qRound(kmh)).arg(qRound(miles(kmh)))};
}

// ---- Vehicle ------------------------------------------------------------------------------------

/** Five characters are shown. */
static QVariantList battery(const CarState &car)
{
    return {QString::number(car.value(Quantity::Voltage), 'f', 1) + QLatin1Char('V')};
}

/** What is unknown counts as closed: the page has no other way to draw it. */
static QVariantList openings(const CarState &car)
{
    static constexpr int count = 6;
    int bits = 0;
    for (int i = 0; i < count; ++i)
        bits |= car.isOn(Quantity::HoodOpen + i) ? 1 << i : 0;
    return {byte(bits)};
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
    static constexpr double kilopascalPerPsi = 6.894757;
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

/** From left to right. Pressures are shown white whatever their flags, so it marks soft tires. */
static QVariantList tireTemperatures(const CarState &car)
{
    QStringList texts;
    for (const int tire : {0, 1, 3, 2}) {
        const Quantity quantity = Quantity::TireTemperatureFrontLeft + tire;
        texts.append(car.knows(quantity)
                         ? QString::number(qRound(fahrenheit(car.value(quantity)))) +
                               QLatin1Char('F')
                         : unknownText);
    }
    const auto warns = [&car](int tire) { return isSoft(car, tire) || isHot(car, tire); };
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
    {"gaugeTRValueDualNotify",       Quantity::CoolantTemperature,      1, corner<Quantity::CoolantTemperature, 250>},
    {"gaugeBLValueDualNotify",       Quantity::IntakeTemperature,       1, corner<Quantity::IntakeTemperature, 250>},
    {"gaugeBRValueDualNotify",       Quantity::EngineLoad,              1, corner<Quantity::EngineLoad, 100>},
    {"gaugeTLValueDualNotify",       Quantity::TransmissionTemperature, 1, corner<Quantity::TransmissionTemperature, 250>},
    {"gaugeTLValueDualNotify",       Quantity::OilTemperature,          1, corner<Quantity::OilTemperature, 250>},
    {"gaugeTLValueDualNotify",       Quantity::AmbientTemperature,      1, corner<Quantity::AmbientTemperature, 250>},
    {"gauTopBarTextNotify",          Quantity::VehicleSpeed,            1, speed},
    {"batteryVoltage",               Quantity::Voltage,                 1, battery},
    {"doorStatus",                   Quantity::HoodOpen,                6, openings},
    {"tirePressureStatus",           Quantity::TirePressureFrontLeft,   8, tirePressures, true},
    {"checkEngineStatus",            Quantity::EngineLamp,              1, engineLamp, true},
    {"tireTemperatureStatus",        Quantity::TirePressureFrontLeft,  12, tireTemperatures},
    {"seatbeltStatus",               Quantity::BeltDriver,              2, belts},
    {"checkGearPositionStatus",      Quantity::ParkLock,                2, gear},
    {"compassHeading",               Quantity::Heading,                 1, heading},
    {"NordaClimateCtrlStatusNotify", Quantity::ClimateOn,              20, climateStatus},
    {"parkingTopBarText",            Quantity::ObstacleWarning,         1, obstacleText},
    {"parkingDistanceRear",          Quantity::ObstacleRearLeft,        6, rearZone, true},
    {"parkingDistanceFront",         Quantity::ObstacleFrontLeft,       4, frontDistances},
};
// clang-format on
static_assert(int(Quantity::RearSeatRight) - int(Quantity::ClimateOn) + 1 == 20);
static_assert(int(Quantity::BlindSpotRight) - int(Quantity::ObstacleRearLeft) + 1 == 6);
static_assert(int(Quantity::DoorRearRight) - int(Quantity::HoodOpen) + 1 == 6);
static_assert(int(Quantity::TireTemperatureRearLeft) - int(Quantity::TirePressureFrontLeft) + 1 ==
              12);

} // namespace module
