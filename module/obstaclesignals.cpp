#include "pagesignals.h"
#include "wire.h"

#include <QByteArray>

#include <algorithm>

namespace module {

struct Band
{
    double within; // metres
    int level;
};

static constexpr Band bands[] = {{0.35, 4}, {0.6, 3}, {1.0, 2}, {1.5, 1}};
static constexpr double reach = bands[std::size(bands) - 1].within;
static constexpr int sensors = 4; // at each end of the car

/** Where nothing is known, nothing is near. */
static double distance(const CarState &car, Quantity sensor)
{
    static constexpr double farAway = 99;
    return car.valueOr(sensor, farAway);
}

int obstacleLevel(double metres)
{
    const auto band = std::find_if(std::begin(bands), std::end(bands),
                                   [metres](const Band &row) { return metres <= row.within; });
    return band == std::end(bands) ? 0 : band->level;
}

QVariantList zoneMessage(int code, int level)
{
    return {QByteArray(1, char(code)) + char(level)};
}

RearObstacle nearestBehind(const CarState &car)
{
    int nearest = 0;
    for (int sensor = 1; sensor < sensors; ++sensor) {
        if (distance(car, Quantity::ObstacleRearLeft + sensor) <
            distance(car, Quantity::ObstacleRearLeft + nearest))
            nearest = sensor;
    }
    return {wire::FirstRearZone + nearest,
            obstacleLevel(distance(car, Quantity::ObstacleRearLeft + nearest))};
}

/**
 * The page shows one rear zone or one blind spot; what is behind the car comes first. Only a
 * message about a zone clears the zones.
 */
QVariantList rearZone(const CarState &car)
{
    const RearObstacle nearest = nearestBehind(car);
    if (nearest.level > 0)
        return zoneMessage(nearest.zone, nearest.level);
    if (car.isOn(Quantity::BlindSpotLeft))
        return zoneMessage(wire::BlindSpotLeft, wire::LastParkingLevel);
    if (car.isOn(Quantity::BlindSpotRight))
        return zoneMessage(wire::BlindSpotRight, wire::LastParkingLevel);
    const bool hasSensors = car.knewAny(Quantity::ObstacleRearLeft, sensors);
    return zoneMessage(hasSensors ? wire::FirstRearZone : wire::NoBlindSpot, 0);
}

/** From 0 for nothing within reach to 255 at the bumper, in fifteen steps. */
QVariantList frontDistances(const CarState &car)
{
    static constexpr int steps = 15;
    static constexpr int unitsPerStep = 255 / steps;
    QByteArray front;
    for (int sensor = 0; sensor < sensors; ++sensor) {
        const double metres = distance(car, Quantity::ObstacleFrontLeft + sensor);
        const double nearness = std::clamp(1 - metres / reach, 0.0, 1.0);
        front.append(char(unitsPerStep * qRound(steps * nearness)));
    }
    return {front};
}

} // namespace module
