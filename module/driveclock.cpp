#include "driveclock.h"

namespace module {

static constexpr double outOfOrderMs = 10 * 1000.0;   // further back, the clock was set
static constexpr double longestPauseMs = 24 * 3600e3; // further on, too

qint64 DriveClock::at(double fileMs)
{
    if (!m_started)
        m_startMs = fileMs;
    m_started = true;
    const double step = fileMs - m_startMs - m_nowMs;
    const bool wasSet = step < -outOfOrderMs || step > longestPauseMs;
    m_irregularSteps += step < 0 || wasSet;
    if (wasSet)
        m_startMs = fileMs - m_nowMs;
    else
        m_nowMs += qMax(0.0, step);
    return nowMs();
}

} // namespace module
