#pragma once

#include <QVector>

namespace module {

/** What a recorded drive can tell, in metric units. */
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
    Count
};

/** How a quantity is called, shown and told from nonsense. */
struct QuantityInfo
{
    const char *name;
    const char *unit; ///< the unit it is shown in: temperatures in degrees Fahrenheit
    double lowest;    ///< the plausible range, in metric units
    double highest;
    bool isTemperature;
};

const QuantityInfo &quantityInfo(Quantity quantity);
/** A value in the unit that it is shown in. */
double shownValue(Quantity quantity, double metric);

/** One value at a moment of drive time. */
struct Sample
{
    qint64 atMs;
    float value;
    Quantity quantity;
};

} // namespace module
