#include "serviceconnection.h"

#include "calllog.h"
#include "client.h"
#include "interface.h"
#include "metacall.h"
#include "norda/vtqadaptor.h"
#include "norda/vtqservice.h"

#include <QCoreApplication>
#include <QDBusMessage>

using bus::Client;

static const bus::Interface &interface()
{
    static const bus::Interface all(
        {&norda::VtqAdaptor::staticMetaObject, &norda::VtqService::staticMetaObject});
    return all;
}

/** The object of a class in the interface's list. */
static QObject *emitter(int place)
{
    if (place == 0)
        return norda::VtqAdaptor::instance();
    return norda::VtqService::instance();
}

static void emitSignal(const QString &name, const QVariantList &arguments)
{
    const bus::Interface::Member signal = interface().signal(name);
    bus::invokeMethod(emitter(signal.place), signal.method, arguments);
}

static void setFeatures(const QString &query, const QVariantList &arguments)
{
    norda::VtqService::instance()->setFeaturesOf(query.toLatin1(), arguments.value(0).toInt(),
                                                 arguments.value(1).value<QMap<int, bool>>());
}

/** Whether a command asks for a page's state, so that it is worth repeating. */
static bool isRequest(const QString &command)
{
    return command.contains(QLatin1String("request"), Qt::CaseInsensitive);
}

ServiceConnection::ServiceConnection() : m_address(qEnvironmentVariable("NORDA_MODULE_BUS")) {}

ServiceConnection *ServiceConnection::instance()
{
    static auto *const connection = new ServiceConnection;
    return connection;
}

void ServiceConnection::setAddress(const QString &address)
{
    m_address = address;
}

void ServiceConnection::setState(State state)
{
    if (state == m_state)
        return;
    m_state = state;
    emit stateChanged(state);
}

/** A call of the plugin to one of the objects; not a query, which is answered here. */
void ServiceConnection::sendCommand(const QString &operation, QVariantList arguments)
{
    static const QString scope = QStringLiteral("norda::");
    if (!operation.startsWith(scope))
        return;
    const QString name = operation.mid(operation.lastIndexOf(QLatin1Char(':')) + 1);
    const bus::Interface::Member command = interface().command(name);
    if (!command.isValid() || !command.resultSignature.isEmpty() ||
        !bus::convertArguments(command.method, &arguments))
        return;
    if (isRequest(name))
        m_requests.insert(name, arguments);
    m_client->send(name, arguments);
}

/** A module that came back, or that came after the pages had asked, is asked again. */
void ServiceConnection::repeatRequests()
{
    for (auto it = m_requests.cbegin(); it != m_requests.cend(); ++it)
        m_client->send(it.key(), it.value());
}

QVariantList ServiceConnection::call(const QString &path, const QString &interface,
                                     const QString &method, const QVariantList &arguments,
                                     QString *error)
{
    if (m_state != Connected) {
        *error = QStringLiteral("%1: expected a vehicle module, there is none").arg(method);
        return {};
    }
    QDBusMessage call = QDBusMessage::createMethodCall({}, path, interface, method);
    call.setArguments(arguments);
    const QDBusMessage answer = m_client->call(call);
    if (answer.type() != QDBusMessage::ReplyMessage)
        *error =
            QStringLiteral("%1: expected an answer, got '%2'").arg(method, answer.errorMessage());
    return answer.arguments();
}

void ServiceConnection::open()
{
    delete m_client;
    m_client = nullptr;
    if (m_address.isEmpty()) {
        setState(InProcess);
        return;
    }
    m_client = new Client(interface(), this);
    m_client->setUrgent(QStringLiteral("checkGearPositionStatus"));
    connect(m_client, &Client::urgentReceived, this, [this](const QVariantList &arguments) {
        emit gearAnnounced(arguments.value(0).toInt());
    });
    connect(m_client, &Client::received, this, emitSignal);
    connect(m_client, &Client::featuresReceived, this, setFeatures);
    connect(m_client, &Client::stateChanged, this, [this](Client::State state) {
        if (state == Client::Connected)
            repeatRequests();
        setState(state == Client::Connected ? Connected : Waiting);
    });
    connect(CallLog::instance(), &CallLog::called, m_client,
            [this](const QString &operation, const QVariantList &arguments) {
                sendCommand(operation, arguments);
            });
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, m_client, &Client::close);
    setState(Waiting);
    m_client->open(m_address);
}
