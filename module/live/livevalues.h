#pragma once

#include "quantities.h"

namespace module {

/** The latest values of a car that is connected now: how old they are, and which are missing. */
class LiveValues
{
public:
    struct Value
    {
        bool isKnown = false;
        double value = 0;
        qint64 ms = -1;      ///< when it came last, -1 for never
        double periodMs = 0; ///< what usually passes between two of them
        bool isWatched = false;
    };

    LiveValues();

    /**
     * Keeps a value.
     * @param isWatched  whether it goes missing by its silence; otherwise a sample tells it
     * @return whether it is plausible, or tells that the quantity is missing
     */
    bool add(const Sample &sample, bool isWatched);
    /** What has gone missing since the last time, as samples that are no numbers. */
    QVector<Sample> missing(qint64 nowMs);
    /** What is known goes missing. @param onlyWatched  but not what samples tell of */
    QVector<Sample> forget(qint64 nowMs, bool onlyWatched);
    /** What is known, as samples in the order of their time. */
    QVector<Sample> latest() const;

    const Value &of(Quantity quantity) const { return m_values.at(int(quantity)); }
    int droppedValues() const { return m_droppedValues; }

private:
    QVector<Value> m_values; // by quantity
    int m_droppedValues = 0;
};

} // namespace module
