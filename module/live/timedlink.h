#pragma once

#include "live/obdlink.h"

#include <QElapsedTimer>
#include <QTimer>

namespace module {

/** A link with a clock, for a protocol that has none of its own. */
class TimedLink : public ObdLink
{
    Q_OBJECT
public:
    TimedLink();

protected:
    qint64 nowMs() const { return m_clock.elapsed(); }
    /** Calls advance() at this time; -1 for never. */
    void schedule(qint64 dueMs);
    virtual void advance() = 0;

private:
    QElapsedTimer m_clock;
    QTimer m_timer;
};

} // namespace module
