#include "drive.h"

#include "calllog.h"

#include <QScopedValueRollback>
#include <QtMath>

#include <limits>

namespace module {

static constexpr qint64 sliceMs = 250; // of drive time, at unlimited speed
static constexpr qint64 turnMs = 20;   // of real time, after which pages can paint
static constexpr int idleTickMs =
    1000; // of real time, when nothing is due and the drive has no end
static constexpr qint64 noLimit = std::numeric_limits<qint64>::max();

Drive::Drive(std::unique_ptr<VehicleSource> source, QObject *parent)
    : QObject(parent), m_source(std::move(source))
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &Drive::advance);
    connect(CallLog::instance(), &CallLog::called, this, &Drive::onCall);
    m_source->setWakeUp([this] {
        if (m_playing)
            schedule();
    });
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

/** Where the clock is that the drive follows, however late the drive is. */
qint64 Drive::runningMs() const
{
    const qint64 live = m_source->liveMs();
    return live >= 0 ? live : m_baseMs + qRound64(double(m_clock.elapsed()) * m_speed);
}

/** The time of the clock: never after an emission that is still to be delivered. */
qint64 Drive::clockMs() const
{
    if (!m_playing || m_speed == Unlimited)
        return m_positionMs;
    qint64 now = runningMs();
    for (const qint64 bound : {m_source->nextDueMs(), durationMs()}) {
        if (bound >= 0)
            now = qMin(now, bound);
    }
    return qMax(m_positionMs, now);
}

qint64 Drive::nowMs() const
{
    return m_delivering ? m_positionMs : clockMs();
}

void Drive::setSpeed(double factor)
{
    m_positionMs = clockMs();
    m_speed = m_source->liveMs() >= 0 ? 1.0 : factor;
    if (!m_playing)
        return;
    restartClock();
    schedule();
}

void Drive::setLimit(qint64 ms)
{
    m_limitMs = ms;
    if (m_playing)
        schedule();
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
    m_positionMs = clockMs();
    m_playing = false;
    ++m_delivery;
    m_timer.stop();
    emit playingChanged(false);
}

void Drive::step()
{
    pause();
    const qint64 due = m_source->nextDueMs();
    const qint64 end = durationMs();
    if (due < 0 || (end >= 0 && due > end))
        return;
    if (deliverUntil(due, noLimit) != Delivery::Complete)
        return;
    m_positionMs = qMax(m_positionMs, due);
    emit positionChanged(m_positionMs);
}

void Drive::seek(qint64 ms)
{
    const qint64 end = durationMs();
    const qint64 fromMs = clockMs();
    const qint64 wanted = m_source->liveMs() >= 0 ? m_source->liveMs() : ms;
    m_positionMs = end < 0 ? qMax<qint64>(0, wanted) : qBound<qint64>(0, wanted, end);
    emit jumped(fromMs, m_positionMs);
    m_source->seek(m_positionMs);
    m_faults.seek(m_positionMs);
    if (deliverUntil(m_positionMs, noLimit) == Delivery::Interrupted)
        return; // a receiver seeked elsewhere
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
    if (due < 0 && end < 0) {
        m_timer.start(idleTickMs);
        return;
    }
    if (due < 0 || (end >= 0 && due > end))
        due = qMax(end, m_positionMs);
    const double waitMs = double(due - runningMs()) / m_speed;
    m_timer.start(qCeil(qBound(0.0, waitMs, 60000.0)));
}

/** The same moments in every run: where a turn was used up must not show in what follows. */
static qint64 endOfSlice(qint64 ms)
{
    return (ms / sliceMs + 1) * sliceMs;
}

void Drive::advance()
{
    const qint64 end = durationMs();
    qint64 now = m_speed == Unlimited ? endOfSlice(m_positionMs) : runningMs();
    if (end >= 0)
        now = qMin(now, end);
    const Delivery delivery = deliverUntil(now, turnMs);
    if (delivery == Delivery::Interrupted)
        return;
    const bool isComplete = delivery == Delivery::Complete;
    if (isComplete)
        m_positionMs = qMax(m_positionMs, now);
    else
        restartClock(); // pages that cannot keep up slow the drive instead of freezing
    emit positionChanged(m_positionMs);
    if (!m_playing)
        return;
    if (!isComplete || !isOver()) {
        schedule();
        return;
    }
    pause();
    emit finished();
}

/** A drive without an end goes on when nothing is due, except at unlimited speed. */
bool Drive::isOver() const
{
    const qint64 end = durationMs();
    if (end >= 0)
        return m_positionMs >= end;
    return m_speed == Unlimited && m_source->nextDueMs() < 0;
}

/** Delivers what is due by a moment, until a receiver pauses or seeks. */
Drive::Delivery Drive::deliverUntil(qint64 ms, qint64 realMs)
{
    const int delivery = ++m_delivery;
    const QScopedValueRollback<bool> delivering(m_delivering, true);
    QElapsedTimer turn;
    turn.start();
    for (qint64 due = m_source->nextDueMs(); due >= 0 && due <= ms; due = m_source->nextDueMs()) {
        if (turn.elapsed() > realMs)
            return Delivery::TurnUsedUp;
        if (due > m_positionMs)
            emit reached(m_positionMs = due);
        deliver(m_source->take(), delivery);
        if (m_delivery != delivery)
            return Delivery::Interrupted;
    }
    return Delivery::Complete;
}

void Drive::deliver(Emission emission, int delivery)
{
    if (emission.isAction) {
        emit actionDue(QString::fromLatin1(emission.signal), emission.arguments);
        return;
    }
    if (m_faults.isIdle()) {
        emitSignal(emission);
        return;
    }
    const QVector<Emission> passed = m_faults.pass(std::move(emission));
    for (const Emission &next : passed) {
        emitSignal(next);
        if (m_delivery != delivery)
            return;
    }
}

void Drive::emitSignal(const Emission &emission)
{
    const QScopedValueRollback<bool> repeating(m_isRepeating, emission.isRepeat);
    m_link.deliver(emission, m_source.get(), nowMs());
}

void Drive::send(const QByteArray &signal, const QVariantList &arguments)
{
    m_link.deliver({nowMs(), signal, arguments}, m_source.get(), nowMs());
}

void Drive::onCall(const QString &operation, const QVariantList &arguments)
{
    if (!m_answering || !operation.startsWith(QLatin1String("norda::")))
        return;
    const bool answers = m_source->command(nowMs(), operation, arguments);
    if (m_playing && m_speed != Unlimited)
        schedule();
    else if (!m_playing && answers)
        QTimer::singleShot(0, this, &Drive::answer);
}

/** A touch while the drive is paused: it goes on only as long as the answer takes. */
void Drive::answer()
{
    if (!m_playing)
        deliverUntil(m_positionMs + VehicleSource::LatestAnswerMs, noLimit);
}

} // namespace module
