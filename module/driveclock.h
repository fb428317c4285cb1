#pragma once

#include <QtGlobal>

namespace module {

/**
 * Turns the clock of a file into drive time, which never runs backwards. Rows that are slightly out
 * of order get the time of the row before; where the clock was set or a time is damaged, only that
 * step is lost.
 */
class DriveClock
{
public:
    /** Drive time at a moment of the file's clock, both in milliseconds. */
    qint64 at(double fileMs);
    /** Drive time reached so far. */
    qint64 nowMs() const { return qRound64(m_nowMs); }
    /** How often the file's clock went back or was set. */
    int irregularSteps() const { return m_irregularSteps; }

private:
    double m_startMs = 0; // the file's clock at the start of the drive
    double m_nowMs = 0;
    int m_irregularSteps = 0;
    bool m_started = false;
};

} // namespace module
