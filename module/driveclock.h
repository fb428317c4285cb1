#pragma once

#include <QtGlobal>

namespace module {

/**
 * Turns the clock of a file into drive time, which never runs backwards. Rows that are a little out
 * of order keep the moment before them; a clock that was set, or a damaged moment, costs its own
 * step and not the rest of the drive.
 */
class DriveClock
{
public:
    /** Drive time at a moment of the file's clock, both in milliseconds. */
    qint64 at(double fileMs);
    /** Drive time reached so far. */
    qint64 nowMs() const { return qRound64(m_nowMs); }
    /** How often the file's clock went back or jumped. */
    int irregularSteps() const { return m_irregularSteps; }

private:
    double m_startMs = 0; // what the file's clock said at the start of the drive
    double m_nowMs = 0;
    int m_irregularSteps = 0;
    bool m_started = false;
};

} // namespace module
