#include "pagesignals.h"
#include "units.h"

#include <algorithm>

namespace module {

static constexpr int ventCodes[] = {1, 4, 2}; // windshield and feet, head, feet
static constexpr int noVent = 0;
static constexpr int lowest = 59; // below it the display shows LO
static constexpr int highest = 90;
static constexpr int lowCode = 50;
static constexpr int highCode = 95;

static int ventCode(const CarState &car, Quantity quantity)
{
    return car.knows(quantity) ? ventCodes[qBound(0, qRound(car.value(quantity)), 2)] : noVent;
}

/** Without a temperature of its own a side has the other one's. */
static int temperatureCode(const CarState &car, Quantity own, Quantity other)
{
    const double set = car.valueOr(own, car.value(other));
    if (std::isnan(set))
        return 0;
    const int degrees = qRound(fahrenheit(set));
    if (degrees < lowest)
        return lowCode;
    return degrees > highest ? highCode : degrees;
}

/** Seven steps of 36. */
static int fanCode(const CarState &car, Quantity quantity)
{
    return 36 * qRound(car.valueOr(quantity, 0) * 7 / 100);
}

/** Three levels each way; cooling counts from 16. */
static int seatCode(const CarState &car, Quantity quantity)
{
    static constexpr int cooling = 16;
    const int level = qRound(car.valueOr(quantity, 0) * 3 / 100);
    return level < 0 ? cooling - level : level;
}

static bool isSystemOn(const CarState &car)
{
    const double fan = car.valueOr(Quantity::Fan, 1);
    return car.valueOr(Quantity::ClimateOn, fan) > 0;
}

QVariantList climateStatus(const CarState &car)
{
    const auto on = [&car](Quantity quantity) { return int(car.isOn(quantity)); };
    const auto isWarm = [&car](Quantity quantity) { return int(car.valueOr(quantity, 0) > 0); };
    const QList<int> status = {
        isSystemOn(car),
        on(Quantity::ClimateAutomatic) + 2 * on(Quantity::ClimateDual),
        fanCode(car, Quantity::Fan),
        ventCode(car, Quantity::AirDistribution),
        on(Quantity::ClimateAc),
        on(Quantity::RearDefroster) + 2 * isWarm(Quantity::WheelHeating),
        temperatureCode(car, Quantity::TemperatureLeft, Quantity::TemperatureRight),
        temperatureCode(car, Quantity::TemperatureRight, Quantity::TemperatureLeft),
        !on(Quantity::ClimateRecirculation),
        seatCode(car, Quantity::SeatLeft),
        seatCode(car, Quantity::SeatRight),
        on(Quantity::ClimateMaxAc),
        on(Quantity::FrontDefroster),
        0,
        seatCode(car, Quantity::RearSeatLeft),
        seatCode(car, Quantity::RearSeatRight),
        0,
        fanCode(car, Quantity::RearFan),
        temperatureCode(car, Quantity::RearTemperature, Quantity::RearTemperature),
        isWarm(Quantity::RearFan),
        ventCode(car, Quantity::RearAirDistribution),
        0,
        0};
    return {QVariant::fromValue(status)};
}

} // namespace module
