#include "canlink.h"

namespace ecu {

CanLink::CanLink(LiveCar *car, const CarBus::Settings &bus, const Outage &silence,
                 std::unique_ptr<CanPort> port, QObject *parent)
    : QObject(parent)
    , m_car(car)
    , m_bus(&car->car(), bus)
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
    const QVector<module::CanFrame> frames = m_bus.takeFrames();
    for (const module::CanFrame &frame : frames) {
        if (!m_silence.covers(nowMs))
            m_port->send(frame);
    }
    const qint64 dueMs = m_bus.nextDueMs();
    if (dueMs >= 0)
        m_timer.start(int(qMax<qint64>(0, dueMs - nowMs)));
    else
        m_timer.stop();
}

} // namespace ecu
