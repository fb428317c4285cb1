#pragma once

#include "quantities.h"

#include <QByteArray>

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
/** The bytes that come closest to a value. */
QByteArray pidData(const Pid &pid, double value);

/** The parameter that tells of the lamp, by a bit. */
constexpr quint8 lampPid = 0x01;

/** What an answer tells. */
struct PidReading
{
    Quantity quantity;
    double value;
};
/**
 * Reads an answer of mode 01, from its service on.
 * @return nothing for a parameter that is not used, or when the answer is too short
 */
std::optional<PidReading> pidReading(const QByteArray &answer);

} // namespace module
