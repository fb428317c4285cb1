#pragma once

#include <QStringList>
#include <QVariant>
#include <QVector>

#include <optional>

namespace module {

/**
 * What a car can report. Neighbours that feed one signal stand together, in the order of its bits
 * or texts: tires go around the car as the pressures do, sensors from the left to the right.
 */
enum class Quantity : quint8 {
    EngineSpeed,
    EngineLoad,
    CoolantTemperature,
    IntakeTemperature,
    AmbientTemperature,
    OilTemperature,
    TransmissionTemperature,
    VehicleSpeed,
    Voltage,
    Throttle,
    ManifoldPressure,
    FuelRate,
    FuelLevel,
    CatalystTemperature,
    BarometricPressure,

    HoodOpen,
    TrunkOpen,
    DoorFrontLeft,
    DoorFrontRight,
    DoorRearLeft,
    DoorRearRight,
    EngineLamp,
    TirePressureFrontLeft,
    TirePressureFrontRight,
    TirePressureRearRight,
    TirePressureRearLeft,
    TireLowFrontLeft,
    TireLowFrontRight,
    TireLowRearRight,
    TireLowRearLeft,
    TireTemperatureFrontLeft,
    TireTemperatureFrontRight,
    TireTemperatureRearRight,
    TireTemperatureRearLeft,
    BeltDriver,
    BeltPassenger,
    ParkLock,
    Gear,
    Heading,

    ClimateOn,
    ClimateAutomatic,
    ClimateDual,
    ClimateMaxAc,
    ClimateAc,
    ClimateRecirculation,
    FrontDefroster,
    RearDefroster,
    WheelHeating,
    TemperatureLeft,
    TemperatureRight,
    Fan,
    AirDistribution,
    SeatLeft,
    SeatRight,
    RearTemperature,
    RearFan,
    RearAirDistribution,
    RearSeatLeft,
    RearSeatRight,

    ObstacleWarning,
    ObstacleFrontLeft,
    ObstacleFrontMiddleLeft,
    ObstacleFrontMiddleRight,
    ObstacleFrontRight,
    ObstacleRearLeft,
    ObstacleRearMiddleLeft,
    ObstacleRearMiddleRight,
    ObstacleRearRight,
    BlindSpotLeft,
    BlindSpotRight,
    Count
};

/** A quantity of a row of neighbours. */
constexpr Quantity operator+(Quantity first, int index)
{
    return Quantity(int(first) + index);
}

/** The page that shows a quantity. */
enum class ShownOn : quint8 { NoPage, Gauges, Vehicle, Climate, Parking };

enum class Unit : quint8 {
    None,
    Flag,
    Rpm,
    Percent,
    Celsius,
    KilometresPerHour,
    Volt,
    Kilopascal,
    LitresPerHour,
    Degrees,
    Metre
};

/** A quantity: its name for a person, its path, and the plausible range in the path's unit. */
struct QuantityInfo
{
    const char *name;
    /** In VSS 4.2, the tree of vehicle signals; what that lacks is under Vehicle.Private. */
    const char *path;
    Unit unit;
    double lowest;
    double highest;
    ShownOn page;
    const char *group; ///< what a page shows together
};

const QuantityInfo &quantityInfo(Quantity quantity);
/** The unit a value is shown in: temperatures are in degrees Fahrenheit. */
QString shownUnit(Quantity quantity);
/** A value in the unit that it is shown in. */
double shownValue(Quantity quantity, double metric);
/** A unit as the tree writes it; empty for none. */
QString unitName(Unit unit);

/** The paths of a quantity, the one that is preferred first. */
QStringList pathsOf(Quantity quantity);
/** The quantity of a path; Count for one that no page and no total knows. */
Quantity quantityOf(const QString &path);
/** A value as a map gives it: a number, true or false, or a word. @return nothing for any other */
std::optional<double> quantityValue(Quantity quantity, const QVariant &value);

/** What the air distributions stand for; the numbers of their words. */
enum class AirDistribution { Up, Middle, Down };

/** One value at a moment of drive time. One that is not a number has gone missing. */
struct Sample
{
    qint64 atMs;
    float value;
    Quantity quantity;
};

} // namespace module
