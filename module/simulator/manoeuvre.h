#pragma once

#include "controls.h"
#include "emissionqueue.h"
#include "trip.h"
#include "vehiclesource.h"

#include <array>

namespace module {

/**
 * Parking: the driver backs along a post towards a wall, waits and pulls out again, while eight
 * distance sensors look around. And the motorway, where others drive in the blind spots.
 */
class Manoeuvre
{
public:
    static constexpr int SensorCount = 8;

    /** The message that nothing is near, in any zone. */
    static QByteArray allClear() { return QByteArray("\5\0", 2); }

    /** What the driver wants while parking; elsewhere the wish stays as it is. */
    void adjust(qint64 nowMs, DriverWish *wish) const;
    void step(qint64 nowMs, double speedKmh, const Controls &controls);
    void report(EmissionQueue *out, qint64 nowMs);
    /** The zones and texts once more, in the order in which a screen has to hear them. */
    void resend(EmissionQueue *out, qint64 atMs) const;

    bool isBackingUp(qint64 nowMs) const;
    /** What a camera at the rear sees. */
    RearView rearView() const;
    /** From 0 for clear to 4 for at the obstacle. */
    int level(int sensor) const;

private:
    double distance(int sensor) const;
    double wallBehind() const;
    void reportZones(EmissionQueue *out, qint64 nowMs);
    void reportBlindSpots(EmissionQueue *out, qint64 nowMs);

    // The middle of the rear axle, in metres; the car starts at 0, 0 and looks along x.
    double m_x = 0;
    double m_y = 0;
    double m_heading = 0;  // radians
    double m_steering = 0; // degrees, positive to the left
    Controls m_controls;
    bool m_active = false;
    bool m_wasActive = false;
    bool m_blocked = false; // by hand
    bool m_watchesBlindSpots = false;
    bool m_backing = false;
    int m_nearest = -1;
    int m_nearestLevel = 0;
};

} // namespace module
