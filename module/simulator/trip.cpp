#include "trip.h"

#include <iterator>

namespace module {

struct Leg
{
    int untilSecond;
    double speedKmh;
    bool sporty;
};

// clang-format off
static constexpr Leg legs[] = {
    { 30,   0, false}, // cold start, idling
    { 50,  30, false}, // town
    { 62,   0, false},
    { 85,  50, false},
    { 97,   0, false},
    {125,  50, false},
    {140,  30, false},
    {150,   0, false},
    {185,  60, false},
    {230, 100, false}, // slip road and motorway
    {290, 120, false},
    {312, 148, true },
    {400, 120, false},
    {440,  90, false},
    {460,  50, false}, // town again
    {470,   0, false},
    {505,  50, false},
    {515,   0, false},
    {545,  30, false},
    {600,   0, false}, // parked
};
// clang-format on
static_assert(legs[std::size(legs) - 1].untilSecond * qint64(1000) == tripMs);

static constexpr qint64 crankMs = 4000;
static constexpr qint64 crankLengthMs = 900;
static constexpr qint64 engineOffMs = 588000;
static constexpr qint64 ignitionOffMs = 596000;

DriverWish tripWish(qint64 ms)
{
    DriverWish wish;
    wish.ignition = ms < ignitionOffMs;
    wish.cranking = ms >= crankMs && ms < crankMs + crankLengthMs;
    wish.engineOn = ms >= crankMs + crankLengthMs && ms < engineOffMs;
    for (const Leg &leg : legs) {
        if (ms < leg.untilSecond * qint64(1000)) {
            wish.speedKmh = leg.speedKmh;
            wish.sporty = leg.sporty;
            break;
        }
    }
    return wish;
}

} // namespace module
