#include "client.h"

#include "interface.h"
#include "modulelink.h"
#include "wirevalues.h"

#include <QElapsedTimer>

namespace bus {

static constexpr qint64 turnMs = 8; // of delivering, after which input and painting have their turn

Client::Client(const Interface &interface, QObject *parent)
    : QObject(parent), m_interface(interface)
{
    registerWireTypes();
    m_turn.setSingleShot(true);
    m_turn.setInterval(0);
    connect(&m_turn, &QTimer::timeout, this, qOverload<>(&Client::deliver));
    m_thread.setObjectName(QStringLiteral("module link"));
}

Client::~Client()
{
    close();
}

void Client::open(const QString &address)
{
    close();
    m_link = new ModuleLink(this);
    m_link->moveToThread(&m_thread);
    connect(&m_thread, &QThread::finished, m_link, &QObject::deleteLater);
    m_thread.start();
    QMetaObject::invokeMethod(m_link, [link = m_link, address] { link->open(address); });
}

void Client::close()
{
    if (!m_link)
        return;
    m_link = nullptr;
    m_state = Waiting;
    m_thread.quit();
    m_thread.wait();
    m_turn.stop();
    m_urgent.clear();
    m_inbox.clear();
    m_waiting.clear();
    m_next = 0;
}

void Client::send(const QString &command, const QVariantList &arguments)
{
    if (m_state == Connected)
        m_link->send(command, arguments);
}

QDBusMessage Client::call(const QDBusMessage &method)
{
    if (!m_link)
        return {};
    const QDBusMessage answer = m_link->call(method);
    // Its thread has taken what came before the answer once it gets to this.
    QMetaObject::invokeMethod(
        m_link, [] {}, Qt::BlockingQueuedConnection);
    while (deliverNext()) {
    }
    return answer;
}

/** Delivers in turns; what is new meanwhile follows in the next one. */
void Client::deliver()
{
    QElapsedTimer turn;
    turn.start();
    while (m_link && turn.elapsed() < turnMs) {
        if (!deliverNext())
            return;
    }
    m_turn.start();
}

/** @return false when nothing waits */
bool Client::deliverNext()
{
    if (m_next == m_waiting.size()) {
        m_next = 0;
        m_waiting = m_inbox.take();
        if (m_waiting.isEmpty())
            return false;
    }
    const Record record = m_waiting.at(m_next++); // a receiver that calls the module delivers, too
    deliver(record);
    return true;
}

void Client::deliver(const Record &record)
{
    if (record.name == QLatin1String(featuresSignal)) {
        emit featuresReceived(record.arguments.value(0).toString(), record.arguments.mid(1));
    } else if (record.name.isEmpty()) {
        m_state = State(record.arguments.value(0).toInt());
        emit stateChanged(m_state);
    } else {
        emit received(record.name, record.arguments);
    }
}

/** Of several, the last one counts. */
void Client::deliverUrgent()
{
    const QVector<Record> arrived = m_urgent.take();
    if (!arrived.isEmpty())
        emit urgentReceived(arrived.last().arguments);
}

} // namespace bus
