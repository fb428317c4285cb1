#pragma once

#include "quantities.h"

namespace module {

/** A parameter of OBD-II mode 01: how its bytes make a value. */
struct Pid
{
    quint8 id;
    int bytes;
    Quantity quantity; ///< Count for a parameter that is counted but not used
    double factor;
    double offset;
};

/** The parameter of an id, null for one that is not known. */
const Pid *findPid(quint8 id);
/** The value of a parameter, in metric units. @param data  at least `pid.bytes` bytes */
double pidValue(const Pid &pid, const quint8 *data);

} // namespace module
