#pragma once

namespace module {

// The cars are modelled and recorded in metric units; the simulated one shows mph, miles, feet,
// degrees Fahrenheit and psi.

constexpr double kilometresPerMile = 1.609344;
constexpr double feetPerMetre = 3.28084;
constexpr double kilopascalPerPsi = 6.894757;

constexpr double miles(double kilometres)
{
    return kilometres / kilometresPerMile;
}

constexpr double kilometres(double miles)
{
    return miles * kilometresPerMile;
}

constexpr double feet(double metres)
{
    return metres * feetPerMetre;
}

constexpr double metresPerSecond(double kmh)
{
    return kmh / 3.6;
}

constexpr double fahrenheit(double celsius)
{
    return celsius * 9 / 5 + 32;
}

constexpr double celsius(double fahrenheit)
{
    return (fahrenheit - 32) * 5 / 9;
}

} // namespace module
