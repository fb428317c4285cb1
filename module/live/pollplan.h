#pragma once

#include "live/obdlink.h"
#include "quantities.h"

#include <QMap>
#include <QSet>

namespace module {

/** Which parameters each control unit of a car has. */
class SupportedPids
{
public:
    /** Parameters are reported in blocks of 32; the last one tells of the next block. */
    static constexpr int BlockSize = 0x20;

    /** @return whether it is an answer to the request for this block */
    bool add(int block, const ObdAnswer &answer);
    bool isEmpty() const { return m_pids.isEmpty(); }
    /** The units that have a parameter, by the identifiers of their answers. */
    QVector<quint32> unitsWith(int pid) const;
    QVector<quint32> units() const { return m_pids.keys().toVector(); }

private:
    QMap<quint32, QSet<int>> m_pids; // by unit
};

/** A request that is repeated. */
struct PollItem
{
    ObdRequest request;
    Quantity quantity = Quantity::Count; ///< Count for the stored trouble codes
    int intervalMs = 0;                  ///< at best
};

/** What is asked of a car: only what a page can show, fast values more often than slow ones. */
QVector<PollItem> pollPlan(const SupportedPids &supported);

/** The blocks of parameters that can hold one of them. */
constexpr int lastPidBlock = 0x40;

} // namespace module
