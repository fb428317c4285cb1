#include "service/remotesource.h"

#include "adaptorlink.h"
#include "busconnection.h"
#include "interface.h"
#include "norda/vtqadaptor.h"
#include "norda/vtqservice.h"
#include "service/moduleinterface.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QEventLoop>
#include <QMap>
#include <QTimer>

namespace module {

using bus::Client;

static void setFeatures(const QString &query, const QVariantList &arguments)
{
    norda::VtqService::instance()->setFeaturesOf(query.toLatin1(), arguments.value(0).toInt(),
                                                 arguments.value(1).value<QMap<int, bool>>());
}

RemoteSource::RemoteSource(const QString &address) : m_address(address), m_client(moduleInterface())
{
    connect(&m_client, &Client::received, this, &RemoteSource::onReceived);
    connect(&m_client, &Client::featuresReceived, this, setFeatures);
    connect(&m_client, &Client::stateChanged, this, &RemoteSource::onState);
    m_clock.start();
}

RemoteSource::~RemoteSource() = default;

// ---- The connection -----------------------------------------------------------------------------

/** The client connects in its thread and tries again; a bus that is not there is an error here. */
bool RemoteSource::connectToBus(QString *error)
{
    bus::BusConnection probe;
    if (!probe.open(m_address)) {
        *error = QStringLiteral("dbus:%1: expected a D-Bus, got '%2'")
                     .arg(m_address, probe.bus().lastError().message());
        return false;
    }
    m_client.open(m_address);
    if (probe.bus().interface()->isServiceRegistered(QLatin1String(bus::serviceName)))
        waitForModule();
    return true;
}

void RemoteSource::waitForModule()
{
    static constexpr int longestMs = 5000;
    QEventLoop loop;
    connect(&m_client, &Client::stateChanged, &loop, &QEventLoop::quit);
    QTimer::singleShot(longestMs, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

void RemoteSource::onState(Client::State state)
{
    const bool isConnected = state == Client::Connected;
    m_connections += int(isConnected);
    if (!m_notify)
        return;
    if (!isConnected)
        m_notify(QStringLiteral("The vehicle module has gone"));
    else if (m_connections > 1)
        m_notify(QStringLiteral("The vehicle module is back"));
    else
        m_notify(QStringLiteral("The vehicle module is there"));
}

// ---- Signals and commands -----------------------------------------------------------------------

/** While nobody takes them, only the state is kept. A prompt is no state: it is not repeated. */
void RemoteSource::onReceived(const QString &signal, const QVariantList &arguments)
{
    static constexpr int mostPending = 50000;
    const Emission emission = {liveMs(), signal.toLatin1(), arguments};
    ++m_received;
    if (moduleSignal(emission.signal).emitter == norda::VtqAdaptor::instance())
        m_state.add(emission.signal, arguments, emission);
    m_pending.enqueue(emission);
    if (m_pending.size() > mostPending) {
        m_pending.clear();
        m_pending.append(m_state.items().toList());
    }
    if (m_wakeUp)
        m_wakeUp();
}

qint64 RemoteSource::nextDueMs() const
{
    return m_pending.isEmpty() ? -1 : m_pending.head().atMs;
}

/** There is only the present. */
void RemoteSource::seek(qint64 ms)
{
    m_pending.clear();
    m_pending.append(m_state.items().toList());
    for (Emission &emission : m_pending)
        emission.atMs = ms;
}

/** The module answers in its own time. */
bool RemoteSource::command(qint64 /*nowMs*/, const QString &operation,
                           const QVariantList &arguments)
{
    QVariantList sent = arguments;
    const QString name = commandOfCall(operation, &sent);
    if (!name.isEmpty())
        m_client.send(name, sent);
    return false;
}

// ---- What a person is told ----------------------------------------------------------------------

QStringList RemoteSource::findings() const
{
    const bool isConnected = m_client.state() == Client::Connected;
    QStringList lines;
    if (isConnected)
        lines.append(QStringLiteral("Connected to %1").arg(QLatin1String(bus::serviceName)));
    else if (m_connections == 0)
        lines.append(QStringLiteral("Waiting for %1").arg(QLatin1String(bus::serviceName)));
    else
        lines.append(QStringLiteral("%1 has gone").arg(QLatin1String(bus::serviceName)));
    lines.append(QStringLiteral("Bus: ") + m_address);
    lines.append(QStringLiteral("%1 signals were received").arg(m_received));
    if (m_connections > 1)
        lines.append(QStringLiteral("Connected %1 times").arg(m_connections));
    return lines;
}

QVector<Findings> RemoteSource::findingsByPage() const
{
    return {{QStringLiteral("Connection"), findings(), {}}};
}

QJsonObject RemoteSource::statistics() const
{
    return {{"kind", "module"}, {"received", m_received}, {"connections", m_connections}};
}

// ---- By name ------------------------------------------------------------------------------------

static const QString scheme = QStringLiteral("dbus");

bool isRemoteName(const QString &name)
{
    return name == scheme || name.startsWith(scheme + QLatin1Char(':'));
}

QString addressIn(const QString &name)
{
    return name == scheme ? QStringLiteral("session") : name.mid(scheme.size() + 1);
}

std::unique_ptr<VehicleSource> openRemote(const QString &name, const CarFiles &car, QString *error)
{
    const QString address = addressIn(name);
    if (address.isEmpty())
        *error = QStringLiteral("%1: expected dbus:session, dbus:system or dbus: with the address "
                                "of a bus")
                     .arg(name);
    else if (!car.isEmpty())
        *error = QStringLiteral("%1: expected a candump log or a CAN bus with --dbc and --map")
                     .arg(name);
    if (!error->isEmpty())
        return nullptr;
    auto source = std::make_unique<RemoteSource>(address);
    if (!source->connectToBus(error))
        return nullptr;
    return source;
}

} // namespace module
