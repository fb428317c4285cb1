#pragma once

#include "carstate.h"
#include "vehiclesource.h"

#include <QVariantList>

namespace module {

/** A signal of the module, and the quantities that it is made of. */
struct PageSignal
{
    const char *name;
    Quantity first; ///< a row of neighbours
    int count;
    /** Its arguments; empty while none of its quantities is known. */
    QVariantList (*arguments)(const CarState &car);
    /** The next row is emitted again after it: it changes what that one shows. */
    bool disturbsNext = false;
    /** No payload shows it as unknown, so what has gone missing is shown as off or clear. */
    bool isOffWhenMissing = false;
};

/** Of a recorded car, in the order in which they are emitted. */
extern const QVector<PageSignal> pageSignals;

/** A signal of the simulated car's module, which has its own pace, order and rounding. */
struct PacedSignal
{
    PageSignal signal;
    int everyMs = 1; ///< only at multiples of it
};

/** In the order in which they are emitted; the two groups are emitted apart. */
extern const QVector<PacedSignal> simulatedGauges;
extern const QVector<PacedSignal> simulatedVehicle;
/** A list of integers every second, and the more exact signals that follow it. */
extern const PageSignal simulatedProperties;
extern const PageSignal batterySignal;
extern const PageSignal simulatedTireTemperatures;

/** A signal for what is known, or the one that shows it as unknown; no name where there is none. */
Emission emissionOf(const PageSignal &signal, const CarState &car);

/** What the top left gauge can show: the best that a car has, or what a touch selects. */
extern const QVector<Quantity> topLeftTemperatures;
QVariantList gaugeTitles(const CarState &car);

/** The climate status: a list of 23 numbers. */
QVariantList climateStatus(const CarState &car);
/** The nearest rear zone or a blind spot, and the front distances. */
QVariantList rearZone(const CarState &car);
QVariantList frontDistances(const CarState &car);

/** What is nearest to the rear bumper. */
struct RearObstacle
{
    int zone; ///< its code
    int level;
};
RearObstacle nearestBehind(const CarState &car);
/** From 0, clear, to 4, at the obstacle. */
int obstacleLevel(double metres);
QVariantList zoneMessage(int code, int level);

} // namespace module
