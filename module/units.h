#pragma once

namespace module {

// The cars are modelled and recorded in metric units; the simulated one shows mph, miles, feet,
// degrees Fahrenheit and psi.

constexpr double milesPerKilometre = 0.621371;
constexpr double feetPerMetre = 3.28084;

constexpr double fahrenheit(double celsius)
{
    return celsius * 9 / 5 + 32;
}

} // namespace module
