#pragma once

#include "plots/curvename.h"
#include "plots/samples.h"

class Journal;

/** A value of a signal over the session, read from its journal. */
class Curve
{
public:
    Curve(QString text, CurveName name);

    const QString &name() const { return m_text; }
    const QString &unit() const { return m_unit; }
    /** What shares an axis: the unit or, without one, the signal. */
    const QString &scale() const { return m_unit.isEmpty() ? m_name.signal : m_unit; }
    const Samples &samples() const { return m_samples; }

    /** Reads what the journal has got since the last time. */
    void catchUp(const Journal *journal);
    /** For another session. */
    void clear();

private:
    QString m_text;
    CurveName m_name;
    QString m_unit;
    Samples m_samples;
    qint64 m_next = 0; // number of the first entry that has not been read
};
