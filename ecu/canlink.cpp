#include "canlink.h"

namespace ecu {

CanLink::CanLink(LiveCar *car, const CarBus::Settings &bus, std::optional<Broadcaster> broadcaster,
                 const Outage &silence, std::unique_ptr<CanPort> port, QObject *parent)
    : QObject(parent)
    , m_car(car)
    , m_bus(&car->car(), bus)
    , m_broadcaster(std::move(broadcaster))
    , m_silence(silence)
    , m_port(std::move(port))
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &CanLink::advance);
    connect(m_port.get(), &CanPort::received, this, &CanLink::receive);
    connect(m_port.get(), &CanPort::connected, this, &CanLink::advance);
}

CanLink::~CanLink() = default;

void CanLink::receive(const module::CanFrame &frame)
{
    const qint64 nowMs = m_car->update();
    if (m_silence.covers(nowMs))
        return;
    m_bus.receive(frame, nowMs);
    flush(nowMs);
}

void CanLink::advance()
{
    const qint64 nowMs = m_car->update();
    m_bus.advance(nowMs);
    flush(nowMs);
}

void CanLink::flush(qint64 nowMs)
{
    send(m_bus.takeFrames(), nowMs);
    if (m_broadcaster)
        send(m_broadcaster->takeDue(m_car->car(), nowMs), nowMs);
    const qint64 dueMs = nextDueMs();
    if (dueMs >= 0)
        m_timer.start(int(qMax<qint64>(0, dueMs - nowMs)));
    else
        m_timer.stop();
}

void CanLink::send(const QVector<module::CanFrame> &frames, qint64 nowMs)
{
    if (m_silence.covers(nowMs))
        return;
    for (const module::CanFrame &frame : frames)
        m_port->send(frame);
}

qint64 CanLink::nextDueMs() const
{
    const qint64 busMs = m_bus.nextDueMs();
    const qint64 broadcastMs = m_broadcaster ? m_broadcaster->nextDueMs() : -1;
    return busMs < 0 || (broadcastMs >= 0 && broadcastMs < busMs) ? broadcastMs : busMs;
}

} // namespace ecu
