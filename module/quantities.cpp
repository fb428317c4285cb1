#include "quantities.h"

#include "units.h"

#include <QHash>

#include <iterator>

namespace module {

// clang-format off
static constexpr QuantityInfo infos[] = {
    {"Engine speed",             "Vehicle.Powertrain.CombustionEngine.Speed",      Unit::Rpm,     0, 16384, ShownOn::Gauges,  "engine speed"},
    {"Engine load",              "Vehicle.OBD.EngineLoad",                         Unit::Percent, 0, 100,   ShownOn::Gauges,  "engine load"},
    {"Coolant temperature",      "Vehicle.Powertrain.CombustionEngine.ECT",        Unit::Celsius, -60, 250, ShownOn::Gauges,  "coolant temperature"},
    {"Intake air temperature",   "Vehicle.OBD.IntakeTemp",                         Unit::Celsius, -60, 250, ShownOn::Gauges,  "intake air temperature"},
    {"Ambient temperature",      "Vehicle.Exterior.AirTemperature",                Unit::Celsius, -60, 100, ShownOn::Gauges,  "oil, transmission or ambient temperature"},
    {"Oil temperature",          "Vehicle.Powertrain.CombustionEngine.EOT",        Unit::Celsius, -60, 300, ShownOn::Gauges,  "oil, transmission or ambient temperature"},
    {"Transmission temperature", "Vehicle.Powertrain.Transmission.Temperature",    Unit::Celsius, -60, 300, ShownOn::Gauges,  "oil, transmission or ambient temperature"},
    {"Vehicle speed",            "Vehicle.Speed",                                  Unit::KilometresPerHour, 0, 400, ShownOn::Gauges, "vehicle speed"},
    {"Voltage",                  "Vehicle.LowVoltageBattery.CurrentVoltage",       Unit::Volt,    0, 66,    ShownOn::Vehicle, "battery voltage"},
    {"Throttle",                 "Vehicle.OBD.ThrottlePosition",                   Unit::Percent, 0, 100,   ShownOn::NoPage,  "throttle"},
    {"Manifold pressure",        "Vehicle.Powertrain.CombustionEngine.MAP",        Unit::Kilopascal, 0, 700, ShownOn::NoPage, "manifold pressure"},
    {"Fuel rate",                "Vehicle.OBD.FuelRate",                           Unit::LitresPerHour, 0, 3300, ShownOn::NoPage, "fuel rate"},
    {"Fuel level",               "Vehicle.Powertrain.FuelSystem.RelativeLevel",    Unit::Percent, 0, 100,   ShownOn::NoPage,  "fuel level"},
    {"Catalyst temperature",     "Vehicle.OBD.Catalyst.Bank1.Temperature1",        Unit::Celsius, -60, 6600, ShownOn::NoPage, "catalyst temperature"},
    {"Barometric pressure",      "Vehicle.OBD.BarometricPressure",                 Unit::Kilopascal, 0, 255, ShownOn::NoPage, "barometric pressure"},

    {"Hood open",                "Vehicle.Body.Hood.IsOpen",                       Unit::Flag, 0, 1, ShownOn::Vehicle, "hood"},
    {"Trunk open",               "Vehicle.Body.Trunk.Rear.IsOpen",                 Unit::Flag, 0, 1, ShownOn::Vehicle, "trunk"},
    {"Front left door open",     "Vehicle.Cabin.Door.Row1.DriverSide.IsOpen",      Unit::Flag, 0, 1, ShownOn::Vehicle, "doors"},
    {"Front right door open",    "Vehicle.Cabin.Door.Row1.PassengerSide.IsOpen",   Unit::Flag, 0, 1, ShownOn::Vehicle, "doors"},
    {"Rear left door open",      "Vehicle.Cabin.Door.Row2.DriverSide.IsOpen",      Unit::Flag, 0, 1, ShownOn::Vehicle, "doors"},
    {"Rear right door open",     "Vehicle.Cabin.Door.Row2.PassengerSide.IsOpen",   Unit::Flag, 0, 1, ShownOn::Vehicle, "doors"},
    {"Check engine lamp",        "Vehicle.OBD.Status.IsMILOn",                     Unit::Flag, 0, 1, ShownOn::Vehicle, "check engine lamp"},
    {"Front left tire pressure",  "Vehicle.Chassis.Axle.Row1.Wheel.Left.Tire.Pressure",  Unit::Kilopascal, 0, 1500, ShownOn::Vehicle, "tire pressures"},
    {"Front right tire pressure", "Vehicle.Chassis.Axle.Row1.Wheel.Right.Tire.Pressure", Unit::Kilopascal, 0, 1500, ShownOn::Vehicle, "tire pressures"},
    {"Rear right tire pressure",  "Vehicle.Chassis.Axle.Row2.Wheel.Right.Tire.Pressure", Unit::Kilopascal, 0, 1500, ShownOn::Vehicle, "tire pressures"},
    {"Rear left tire pressure",   "Vehicle.Chassis.Axle.Row2.Wheel.Left.Tire.Pressure",  Unit::Kilopascal, 0, 1500, ShownOn::Vehicle, "tire pressures"},
    {"Front left tire low",      "Vehicle.Chassis.Axle.Row1.Wheel.Left.Tire.IsPressureLow",  Unit::Flag, 0, 1, ShownOn::Vehicle, "tire warnings"},
    {"Front right tire low",     "Vehicle.Chassis.Axle.Row1.Wheel.Right.Tire.IsPressureLow", Unit::Flag, 0, 1, ShownOn::Vehicle, "tire warnings"},
    {"Rear right tire low",      "Vehicle.Chassis.Axle.Row2.Wheel.Right.Tire.IsPressureLow", Unit::Flag, 0, 1, ShownOn::Vehicle, "tire warnings"},
    {"Rear left tire low",       "Vehicle.Chassis.Axle.Row2.Wheel.Left.Tire.IsPressureLow",  Unit::Flag, 0, 1, ShownOn::Vehicle, "tire warnings"},
    {"Front left tire temperature",  "Vehicle.Chassis.Axle.Row1.Wheel.Left.Tire.Temperature",  Unit::Celsius, -60, 200, ShownOn::Vehicle, "tire temperatures"},
    {"Front right tire temperature", "Vehicle.Chassis.Axle.Row1.Wheel.Right.Tire.Temperature", Unit::Celsius, -60, 200, ShownOn::Vehicle, "tire temperatures"},
    {"Rear right tire temperature",  "Vehicle.Chassis.Axle.Row2.Wheel.Right.Tire.Temperature", Unit::Celsius, -60, 200, ShownOn::Vehicle, "tire temperatures"},
    {"Rear left tire temperature",   "Vehicle.Chassis.Axle.Row2.Wheel.Left.Tire.Temperature",  Unit::Celsius, -60, 200, ShownOn::Vehicle, "tire temperatures"},
    {"Driver belted",            "Vehicle.Cabin.Seat.Row1.DriverSide.IsBelted",    Unit::Flag, 0, 1, ShownOn::Vehicle, "seat belts"},
    {"Passenger belted",         "Vehicle.Cabin.Seat.Row1.PassengerSide.IsBelted", Unit::Flag, 0, 1, ShownOn::Vehicle, "seat belts"},
    {"Park lock",                "Vehicle.Powertrain.Transmission.IsParkLockEngaged", Unit::Flag, 0, 1, ShownOn::Vehicle, "gear"},
    {"Gear",                     "Vehicle.Powertrain.Transmission.CurrentGear",    Unit::None, -128, 127, ShownOn::Vehicle, "gear"},
    {"Heading",                  "Vehicle.CurrentLocation.Heading",                Unit::Degrees, 0, 360, ShownOn::Vehicle, "compass"},

    {"Climate on",               "Vehicle.Private.Climate.IsOn",                   Unit::Flag, 0, 1, ShownOn::Climate, "on"},
    {"Climate automatic",        "Vehicle.Private.Climate.IsAutomatic",            Unit::Flag, 0, 1, ShownOn::Climate, "automatic"},
    {"Climate dual",             "Vehicle.Private.Climate.IsDual",                 Unit::Flag, 0, 1, ShownOn::Climate, "dual"},
    {"Maximum A/C",              "Vehicle.Private.Climate.IsMaxAirConditioningActive", Unit::Flag, 0, 1, ShownOn::Climate, "A/C"},
    {"A/C",                      "Vehicle.Cabin.HVAC.IsAirConditioningActive",     Unit::Flag, 0, 1, ShownOn::Climate, "A/C"},
    {"Recirculation",            "Vehicle.Cabin.HVAC.IsRecirculationActive",       Unit::Flag, 0, 1, ShownOn::Climate, "recirculation"},
    {"Front defroster",          "Vehicle.Cabin.HVAC.IsFrontDefrosterActive",      Unit::Flag, 0, 1, ShownOn::Climate, "defrosters"},
    {"Rear defroster",           "Vehicle.Cabin.HVAC.IsRearDefrosterActive",       Unit::Flag, 0, 1, ShownOn::Climate, "defrosters"},
    {"Steering wheel heating",   "Vehicle.Chassis.SteeringWheel.HeatingCooling",   Unit::Percent, -100, 100, ShownOn::Climate, "steering wheel heating"},
    {"Left temperature",         "Vehicle.Cabin.HVAC.Station.Row1.Driver.Temperature",     Unit::Celsius, -50, 50, ShownOn::Climate, "temperatures"},
    {"Right temperature",        "Vehicle.Cabin.HVAC.Station.Row1.Passenger.Temperature",  Unit::Celsius, -50, 50, ShownOn::Climate, "temperatures"},
    {"Fan",                      "Vehicle.Cabin.HVAC.Station.Row1.Driver.FanSpeed",        Unit::Percent, 0, 100, ShownOn::Climate, "fan"},
    {"Air distribution",         "Vehicle.Cabin.HVAC.Station.Row1.Driver.AirDistribution", Unit::None, 0, 2, ShownOn::Climate, "air distribution"},
    {"Left seat heating",        "Vehicle.Cabin.Seat.Row1.DriverSide.HeatingCooling",      Unit::Percent, -100, 100, ShownOn::Climate, "seats"},
    {"Right seat heating",       "Vehicle.Cabin.Seat.Row1.PassengerSide.HeatingCooling",   Unit::Percent, -100, 100, ShownOn::Climate, "seats"},
    {"Rear temperature",         "Vehicle.Cabin.HVAC.Station.Row2.Driver.Temperature",     Unit::Celsius, -50, 50, ShownOn::Climate, "rear zone"},
    {"Rear fan",                 "Vehicle.Cabin.HVAC.Station.Row2.Driver.FanSpeed",        Unit::Percent, 0, 100, ShownOn::Climate, "rear zone"},
    {"Rear air distribution",    "Vehicle.Cabin.HVAC.Station.Row2.Driver.AirDistribution", Unit::None, 0, 2, ShownOn::Climate, "rear zone"},
    {"Rear left seat heating",   "Vehicle.Cabin.Seat.Row2.DriverSide.HeatingCooling",      Unit::Percent, -100, 100, ShownOn::Climate, "rear zone"},
    {"Rear right seat heating",  "Vehicle.Cabin.Seat.Row2.PassengerSide.HeatingCooling",   Unit::Percent, -100, 100, ShownOn::Climate, "rear zone"},

    {"Obstacle warning",         "Vehicle.ADAS.ObstacleDetection.IsWarning",       Unit::Flag, 0, 1, ShownOn::Parking, "warning"},
    {"Obstacle front left",         "Vehicle.Private.Obstacle.Front.Left.Distance",        Unit::Metre, 0, 20, ShownOn::Parking, "front distances"},
    {"Obstacle front middle left",  "Vehicle.Private.Obstacle.Front.MiddleLeft.Distance",  Unit::Metre, 0, 20, ShownOn::Parking, "front distances"},
    {"Obstacle front middle right", "Vehicle.Private.Obstacle.Front.MiddleRight.Distance", Unit::Metre, 0, 20, ShownOn::Parking, "front distances"},
    {"Obstacle front right",        "Vehicle.Private.Obstacle.Front.Right.Distance",       Unit::Metre, 0, 20, ShownOn::Parking, "front distances"},
    {"Obstacle rear left",          "Vehicle.Private.Obstacle.Rear.Left.Distance",         Unit::Metre, 0, 20, ShownOn::Parking, "rear distances"},
    {"Obstacle rear middle left",   "Vehicle.Private.Obstacle.Rear.MiddleLeft.Distance",   Unit::Metre, 0, 20, ShownOn::Parking, "rear distances"},
    {"Obstacle rear middle right",  "Vehicle.Private.Obstacle.Rear.MiddleRight.Distance",  Unit::Metre, 0, 20, ShownOn::Parking, "rear distances"},
    {"Obstacle rear right",         "Vehicle.Private.Obstacle.Rear.Right.Distance",        Unit::Metre, 0, 20, ShownOn::Parking, "rear distances"},
    {"Blind spot left",          "Vehicle.Private.BlindSpot.Left.IsWarning",       Unit::Flag, 0, 1, ShownOn::Parking, "blind spots"},
    {"Blind spot right",         "Vehicle.Private.BlindSpot.Right.IsWarning",      Unit::Flag, 0, 1, ShownOn::Parking, "blind spots"},
};

/** The tree has several places for some quantities; these come second. */
struct OtherPath
{
    const char *path;
    Quantity quantity;
};

static constexpr OtherPath otherPaths[] = {
    {"Vehicle.OBD.EngineSpeed",                                         Quantity::EngineSpeed},
    {"Vehicle.Powertrain.CombustionEngine.EngineCoolant.Temperature",   Quantity::CoolantTemperature},
    {"Vehicle.OBD.CoolantTemperature",                                  Quantity::CoolantTemperature},
    {"Vehicle.OBD.AmbientAirTemperature",                               Quantity::AmbientTemperature},
    {"Vehicle.Powertrain.CombustionEngine.EngineOil.Temperature",       Quantity::OilTemperature},
    {"Vehicle.OBD.OilTemperature",                                      Quantity::OilTemperature},
    {"Vehicle.OBD.Speed",                                               Quantity::VehicleSpeed},
    {"Vehicle.OBD.ControlModuleVoltage",                                Quantity::Voltage},
    {"Vehicle.Powertrain.CombustionEngine.TPS",                         Quantity::Throttle},
    {"Vehicle.OBD.MAP",                                                 Quantity::ManifoldPressure},
    {"Vehicle.OBD.FuelLevel",                                           Quantity::FuelLevel},
    {"Vehicle.Powertrain.Transmission.SelectedGear",                    Quantity::Gear},
    {"Vehicle.Cabin.Seat.Row1.DriverSide.Heating",                      Quantity::SeatLeft},
    {"Vehicle.Cabin.Seat.Row1.PassengerSide.Heating",                   Quantity::SeatRight},
    {"Vehicle.Cabin.Seat.Row2.DriverSide.Heating",                      Quantity::RearSeatLeft},
    {"Vehicle.Cabin.Seat.Row2.PassengerSide.Heating",                   Quantity::RearSeatRight},
};

struct UnitTexts
{
    const char *name;  // in the tree
    const char *shown;
};

static constexpr UnitTexts unitTexts[] = {
    {"",        ""},    {"",    ""},    {"rpm", "rpm"}, {"percent", "%"},       {"celsius", "\u2109"},
    {"km/h",    "km/h"}, {"V",  "V"},   {"kPa", "kPa"}, {"l/h",     "L/h"},     {"degrees", "\u00B0"},
    {"m",       "m"},
};
// clang-format on
static_assert(std::size(infos) == size_t(Quantity::Count));
static_assert(std::size(unitTexts) == size_t(Unit::Metre) + 1);

const QuantityInfo &quantityInfo(Quantity quantity)
{
    return infos[size_t(quantity)];
}

QString shownUnit(Quantity quantity)
{
    return QString::fromUtf8(unitTexts[size_t(quantityInfo(quantity).unit)].shown);
}

double shownValue(Quantity quantity, double metric)
{
    return quantityInfo(quantity).unit == Unit::Celsius ? fahrenheit(metric) : metric;
}

QString unitName(Unit unit)
{
    return QLatin1String(unitTexts[size_t(unit)].name);
}

QStringList pathsOf(Quantity quantity)
{
    QStringList paths = {QLatin1String(quantityInfo(quantity).path)};
    for (const OtherPath &other : otherPaths) {
        if (other.quantity == quantity)
            paths.append(QLatin1String(other.path));
    }
    return paths;
}

Quantity quantityOf(const QString &path)
{
    static const QHash<QString, Quantity> byPath = [] {
        QHash<QString, Quantity> found;
        for (int i = 0; i < int(Quantity::Count); ++i) {
            for (const QString &known : pathsOf(Quantity(i)))
                found.insert(known, Quantity(i));
        }
        return found;
    }();
    return byPath.value(path, Quantity::Count);
}

static std::optional<double> numberOfWord(Quantity quantity, const QString &word)
{
    static const QStringList flags = {QStringLiteral("false"), QStringLiteral("true")};
    static const QStringList airDistributions = {QStringLiteral("UP"), QStringLiteral("MIDDLE"),
                                                 QStringLiteral("DOWN")};
    const bool isFlag = quantityInfo(quantity).unit == Unit::Flag;
    const bool isAir =
        quantity == Quantity::AirDistribution || quantity == Quantity::RearAirDistribution;
    const int number = isFlag  ? flags.indexOf(word.toLower())
                       : isAir ? airDistributions.indexOf(word)
                               : -1;
    return number >= 0 ? std::optional<double>(number) : std::nullopt;
}

std::optional<double> quantityValue(Quantity quantity, const QVariant &value)
{
    if (value.type() == QVariant::String)
        return numberOfWord(quantity, value.toString());
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

} // namespace module
