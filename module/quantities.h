#pragma once

#include <QVector>

namespace module {

/** The values of a recorded drive, in metric units. */
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

/** The name, unit and plausible range of a quantity. */
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
