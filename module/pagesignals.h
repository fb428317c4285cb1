#pragma once

#include "carstate.h"

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
};

/** In the order in which they are emitted. */
extern const QVector<PageSignal> pageSignals;

/** The climate status: a list of 23 numbers. */
QVariantList climateStatus(const CarState &car);
/** The nearest rear zone or a blind spot, and the front distances. */
QVariantList rearZone(const CarState &car);
QVariantList frontDistances(const CarState &car);

} // namespace module
