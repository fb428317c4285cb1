#pragma once

#include <QtGlobal>

namespace ecu {

/** A time in which nothing gets through; none at first. */
struct Outage
{
    qint64 fromMs = 0; ///< since the start, in real time
    qint64 toMs = 0;

    bool isPlanned() const { return toMs > fromMs; }
    bool covers(qint64 nowMs) const { return nowMs >= fromMs && nowMs < toMs; }
};

} // namespace ecu
