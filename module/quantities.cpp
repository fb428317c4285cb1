#include "quantities.h"

#include "units.h"

#include <iterator>

namespace module {

// clang-format off
static constexpr QuantityInfo infos[] = {
    {"Engine speed",             "rpm",      0, 16384, false},
    {"Engine load",              "%",        0,   100, false},
    {"Coolant temperature",      "\u2109", -60,   250, true},
    {"Intake air temperature",   "\u2109", -60,   250, true},
    {"Ambient temperature",      "\u2109", -60,   100, true},
    {"Oil temperature",          "\u2109", -60,   300, true},
    {"Transmission temperature", "\u2109", -60,   300, true},
    {"Vehicle speed",            "km/h",     0,   400, false},
    {"Voltage",                  "V",        0,    66, false},
    {"Throttle",                 "%",        0,   100, false},
    {"Manifold pressure",        "kPa",      0,   700, false},
    {"Fuel rate",                "L/h",      0,  3300, false},
    {"Fuel level",               "%",        0,   100, false},
    {"Catalyst temperature",     "\u2109", -60,  6600, true},
    {"Barometric pressure",      "kPa",      0,   255, false},
};
// clang-format on
static_assert(std::size(infos) == size_t(Quantity::Count));

const QuantityInfo &quantityInfo(Quantity quantity)
{
    return infos[size_t(quantity)];
}

double shownValue(Quantity quantity, double metric)
{
    return quantityInfo(quantity).isTemperature ? fahrenheit(metric) : metric;
}

} // namespace module
