#pragma once

#include <QtGlobal>

namespace module {

/** What the driver wants at a moment of the built-in trip. */
struct DriverWish
{
    bool ignition = false;
    bool cranking = false;
    bool engineOn = false;
    double speedKmh = 0; ///< the speed to hold or to reach
    bool sporty = false; ///< a full-throttle overtake
    bool reverse = false;
    bool creeping = false; ///< parking: on the brake, the speed follows at once
};

/** Length of the built-in trip: cold start, town, motorway, town, parked. */
constexpr qint64 tripMs = 600'000;

DriverWish tripWish(qint64 ms);

} // namespace module
