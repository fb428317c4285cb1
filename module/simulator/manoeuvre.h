#pragma once

#include "controls.h"
#include "emissionqueue.h"
#include "trip.h"
#include "vehiclesource.h"

#include <array>

namespace module {

class CarState;

/**
 * Parking: the driver backs past a post towards a wall, waits and pulls out again, while eight
 * sensors measure distances. And the motorway, with other cars in the blind spots.
 */
class Manoeuvre
{
public:
    static constexpr int SensorCount = 8;
    static constexpr int FirstRearSensor = 4;

    /** The message that all zones are clear. */
    static QVariantList allClear();

    /** What the driver wants while parking; otherwise the wish is unchanged. */
    void adjust(qint64 nowMs, DriverWish *wish) const;
    void step(qint64 nowMs, double speedKmh, const Controls &controls);
    void handOver(CarState *car) const;
    void report(EmissionQueue *out, qint64 nowMs, const CarState &car);

    bool isBackingUp(qint64 nowMs) const;
    /** What the rear camera sees. */
    RearView rearView() const;
    /** From 0, clear, to 4, at the obstacle. */
    int level(int sensor) const;

private:
    double distance(int sensor) const;
    double wallBehind() const;
    bool reportRearZone(EmissionQueue *out, qint64 nowMs, const CarState &car);
    QVariantList blindSpotMessage(qint64 nowMs) const;
    void reportBlindSpots(EmissionQueue *out, qint64 nowMs);

    // The middle of the rear axle, in metres; the car starts at 0, 0 in the direction of x.
    double m_x = 0;
    double m_y = 0;
    double m_heading = 0;  // radians
    double m_steering = 0; // degrees, positive to the left
    Controls m_controls;
    bool m_active = false;
    bool m_wasActive = false;
    bool m_blocked = false; // by an override
    bool m_watchesBlindSpots = false;
    bool m_backing = false;
    int m_zone = -1; // the rear zone that was reported last
    int m_level = 0;
};

} // namespace module
