#include "drive.h"

#include "calllog.h"

namespace module {

static constexpr qint64 sliceMs = 250; // of drive time, at unlimited speed

Drive::Drive(std::unique_ptr<VehicleSource> source, QObject *parent)
    : QObject(parent), m_source(std::move(source))
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &Drive::advance);
    connect(CallLog::instance(), &CallLog::called, this, &Drive::onCall);
}

Drive::~Drive() = default;

qint64 Drive::positionMs() const
{
    return m_positionMs;
}

qint64 Drive::durationMs() const
{
    const qint64 whole = m_source->durationMs();
    if (m_limitMs < 0)
        return whole;
    return whole < 0 ? m_limitMs : qMin(whole, m_limitMs);
}

void Drive::setSpeed(double factor)
{
    m_speed = factor;
    if (!m_playing)
        return;
    restartClock();
    schedule();
}

void Drive::setLimit(qint64 ms)
{
    m_limitMs = ms;
}

void Drive::restartClock()
{
    m_baseMs = m_positionMs;
    m_clock.start();
}

void Drive::play()
{
    if (m_playing)
        return;
    m_playing = true;
    restartClock();
    emit playingChanged(true);
    schedule();
}

void Drive::pause()
{
    if (!m_playing)
        return;
    m_playing = false;
    m_timer.stop();
    emit playingChanged(false);
}

void Drive::seek(qint64 ms)
{
    const qint64 end = durationMs();
    m_positionMs = end < 0 ? qMax<qint64>(0, ms) : qBound<qint64>(0, ms, end);
    m_source->seek(m_positionMs);
    deliverUntil(m_positionMs);
    restartClock();
    emit positionChanged(m_positionMs);
    if (m_playing)
        schedule();
}

void Drive::schedule()
{
    if (m_speed == Unlimited) {
        m_timer.start(0);
        return;
    }
    const qint64 end = durationMs();
    qint64 due = m_source->nextDueMs();
    if (due < 0 || (end >= 0 && due > end))
        due = qMax(end, m_positionMs);
    const double waitMs = double(due - m_baseMs) / m_speed - double(m_clock.elapsed());
    m_timer.start(int(qBound(0.0, waitMs, 60000.0)));
}

void Drive::advance()
{
    const qint64 end = durationMs();
    qint64 now = m_speed == Unlimited ? m_positionMs + sliceMs
                                      : m_baseMs + qRound64(double(m_clock.elapsed()) * m_speed);
    if (end >= 0)
        now = qMin(now, end);
    deliverUntil(now);
    if (!m_playing)
        return; // somebody paused in answer to what was delivered
    m_positionMs = qMax(m_positionMs, now);
    emit positionChanged(m_positionMs);

    const bool isOver = end >= 0 ? m_positionMs >= end : m_source->nextDueMs() < 0;
    if (!isOver) {
        schedule();
        return;
    }
    pause();
    emit finished();
}

void Drive::deliverUntil(qint64 ms)
{
    for (qint64 due = m_source->nextDueMs(); due >= 0 && due <= ms; due = m_source->nextDueMs()) {
        m_positionMs = due;
        m_link.deliver(m_source->take());
    }
}

void Drive::onCall(const QString &operation, const QVariantList &arguments)
{
    if (!operation.startsWith(QLatin1String("norda::")))
        return;
    const bool answers = m_source->command(m_positionMs, operation, arguments);
    if (m_playing && m_speed != Unlimited)
        schedule();
    else if (!m_playing && answers)
        QTimer::singleShot(0, this, &Drive::answer);
}

/** A touch while the drive stands still: it goes on for just as long as the answer takes. */
void Drive::answer()
{
    if (!m_playing)
        deliverUntil(m_positionMs + VehicleSource::AnswerMs);
}

} // namespace module
