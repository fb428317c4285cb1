#include "adapterlink.h"

namespace ecu {

AdapterLink::AdapterLink(LiveCar *car, const CarBus::Settings &bus, const Faults &faults,
                         std::unique_ptr<LinePort> port, QObject *parent)
    : QObject(parent)
    , m_car(car)
    , m_bus(&car->car(), bus)
    , m_adapter(&car->car(), &m_bus, faults.answers)
    , m_faults(faults)
    , m_port(std::move(port))
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &AdapterLink::advance);
    connect(m_port.get(), &LinePort::received, this, &AdapterLink::receive);
}

AdapterLink::~AdapterLink() = default;

bool AdapterLink::open(QString *error)
{
    if (!m_port->open(error))
        return false;
    if (m_faults.pulled.isPlanned()) {
        QTimer::singleShot(int(m_faults.pulled.fromMs), this, [this] { m_port->close(); });
        QTimer::singleShot(int(m_faults.pulled.toMs), this, &AdapterLink::reopen);
    }
    flush(m_car->update());
    return true;
}

/** An adapter that was without power has forgotten everything. */
void AdapterLink::reopen()
{
    m_adapter = ElmAdapter(&m_car->car(), &m_bus, m_faults.answers);
    QString error;
    if (m_port->open(&error))
        emit reopened();
    else
        emit failed(error);
}

void AdapterLink::receive(const QByteArray &characters)
{
    const qint64 nowMs = m_car->update();
    if (m_faults.silence.covers(nowMs))
        return;
    m_adapter.receive(characters, nowMs);
    flush(nowMs);
}

void AdapterLink::advance()
{
    const qint64 nowMs = m_car->update();
    m_adapter.advance(nowMs);
    flush(nowMs);
}

void AdapterLink::flush(qint64 nowMs)
{
    const QByteArray out = m_adapter.takeOutput();
    if (!out.isEmpty() && !m_faults.silence.covers(nowMs))
        m_port->write(out);
    const qint64 dueMs = m_adapter.nextDueMs();
    if (dueMs >= 0)
        m_timer.start(int(qMax<qint64>(0, dueMs - nowMs)));
    else
        m_timer.stop();
}

} // namespace ecu
