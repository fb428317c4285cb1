#include "timedlink.h"

namespace module {

TimedLink::TimedLink()
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &TimedLink::advance);
    m_clock.start();
}

void TimedLink::schedule(qint64 dueMs)
{
    if (dueMs < 0)
        m_timer.stop();
    else
        m_timer.start(int(qBound<qint64>(0, dueMs - nowMs(), 60000)));
}

} // namespace module
