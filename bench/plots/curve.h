#pragma once

#include "plots/curvename.h"
#include "plots/samples.h"

class Journal;
class QuantityLog;

/** A value of a signal, or a quantity of the car, over the session. */
class Curve
{
public:
    Curve(QString text, CurveName name);

    const QString &name() const { return m_text; }
    const QString &unit() const { return m_unit; }
    /** What shares an axis: the unit or, without one, the signal or the quantity. */
    const QString &scale() const
    {
        return !m_unit.isEmpty() ? m_unit : m_name.isQuantity() ? m_text : m_name.signal;
    }
    const Samples &samples() const { return m_samples; }

    /** Reads what the session has got since the last time. */
    void catchUp(const Journal *journal, const QuantityLog &quantities);
    /** For another session. */
    void clear();

private:
    void readSignals(const Journal *journal);
    void readValues(const QuantityLog &quantities);

    QString m_text;
    CurveName m_name;
    QString m_unit;
    Samples m_samples;
    qint64 m_next = 0; // number of the first entry or value that has not been read
};
