#include "modulelink.h"

#include "client.h"
#include "interface.h"
#include "wirevalues.h"

#include <QDBusConnectionInterface>
#include <QMap>

#include <chrono>
#include <utility>

namespace bus {

using namespace std::chrono_literals;

static constexpr auto retryInterval = 500ms; // while there is no bus, or a module without an answer
static constexpr int answerMs = 5000;        // the longest time that a working module takes
static constexpr int shortestPingMs = 500;
static constexpr int mostWarnings = 20;
static constexpr auto afterFlood = 200ms; // before the state is asked for anew

ModuleLink::ModuleLink(Client *client)
    : m_client(client), m_retry(this), m_silence(this), m_gone(this)
{
    for (QTimer *timer : {&m_retry, &m_silence, &m_gone})
        timer->setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &ModuleLink::retry);
    connect(&m_silence, &QTimer::timeout, this, &ModuleLink::onSilenceTimer);
    connect(&m_gone, &QTimer::timeout, this, &ModuleLink::showMissing);
}

ModuleLink::~ModuleLink() = default;

void ModuleLink::open(const QString &address)
{
    m_address = address;
    connectToBus();
}

void ModuleLink::retry()
{
    if (m_stage == Stage::NoBus)
        connectToBus();
    else if (!m_owner.isEmpty())
        requestState();
}

void ModuleLink::connectToBus()
{
    static const QString daemon = QStringLiteral("org.freedesktop.DBus");
    {
        const QMutexLocker lock(&m_mutex);
        if (!m_connection.open(m_address, this, SLOT(onDisconnected()))) {
            m_retry.start(retryInterval);
            return;
        }
    }
    bus().connect(daemon, QStringLiteral("/org/freedesktop/DBus"), daemon,
                  QStringLiteral("NameOwnerChanged"), {QLatin1String(serviceName)}, {}, this,
                  SLOT(onOwnerChanged(QString, QString, QString)));
    setStage(Stage::NoModule);
    setModule(bus().interface()->serviceOwner(QLatin1String(serviceName)));
}

void ModuleLink::onDisconnected()
{
    leaveModule();
    setStage(Stage::NoBus);
    connectToBus();
}

void ModuleLink::onOwnerChanged(const QString &name, const QString & /*from*/, const QString &to)
{
    if (name == QLatin1String(serviceName))
        setModule(to);
}

/** A module came, went or was replaced. @param owner  empty when there is none */
void ModuleLink::setModule(const QString &owner)
{
    if (owner == m_owner)
        return;
    leaveModule();
    if (owner.isEmpty())
        return;
    {
        const QMutexLocker lock(&m_mutex);
        m_owner = owner;
    }
    bus().connect(owner, QLatin1String(objectPath), QLatin1String(interfaceName), {}, this,
                  SLOT(onSignal(QDBusMessage)));
    requestState();
}

void ModuleLink::leaveModule()
{
    if (m_owner.isEmpty())
        return;
    bus().disconnect(m_owner, QLatin1String(objectPath), QLatin1String(interfaceName), {}, this,
                     SLOT(onSignal(QDBusMessage)));
    {
        const QMutexLocker lock(&m_mutex);
        m_owner.clear();
    }
    m_retry.stop();
    m_silence.stop();
    setStage(Stage::NoModule);
    if (!m_isMissingShown)
        m_gone.start(m_missingAfterMs);
}

void ModuleLink::ask(const char *method, const char *slot, int timeoutMs)
{
    const QDBusMessage call = QDBusMessage::createMethodCall(
        m_owner, QLatin1String(objectPath), QLatin1String(interfaceName), QLatin1String(method));
    bus().callWithCallback(call, this, slot, SLOT(onNoAnswer(QDBusError, QDBusMessage)), timeoutMs);
}

/** Signals that come before the snapshot are part of it. */
void ModuleLink::requestState()
{
    m_stage = Stage::Asking;
    m_silence.stop();
    ask(missingValuesMethod, SLOT(onMissingValues(QDBusMessage)), answerMs);
}

static QVector<Record> recordsOf(const QVariant &answer)
{
    static const QString signature = QStringLiteral("a(sav)");
    QVector<Record> records;
    if (answer.userType() == qMetaTypeId<QDBusArgument>()) {
        const auto argument = answer.value<QDBusArgument>();
        if (argument.currentSignature() == signature)
            argument >> records;
    }
    return records;
}

/** Whether an answer is one that is still waited for. */
bool ModuleLink::isExpected(const QDBusMessage &reply) const
{
    return m_stage == Stage::Asking && reply.service() == m_owner;
}

void ModuleLink::onMissingValues(const QDBusMessage &reply)
{
    static constexpr uint longestMs = 60000;
    if (!isExpected(reply))
        return;
    const QVariantList answer = reply.arguments();
    m_missingAfterMs = int(qMin(answer.value(0).toUInt(), longestMs));
    m_missing = recordsOf(answer.value(1));
    ask(snapshotMethod, SLOT(onSnapshot(QDBusMessage)), answerMs);
}

static bool isUnknown(const QDBusError &error)
{
    return error.type() == QDBusError::UnknownMethod ||
           error.type() == QDBusError::UnknownInterface ||
           error.type() == QDBusError::UnknownObject;
}

/** A module that only sends is accepted with what it sends from now on. */
void ModuleLink::onUnknownMethod(const QString &method)
{
    if (m_stage != Stage::Asking)
        return;
    if (method == QLatin1String(missingValuesMethod)) {
        m_missingAfterMs = 0;
        m_missing.clear();
        ask(snapshotMethod, SLOT(onSnapshot(QDBusMessage)), answerMs);
    } else {
        start({});
    }
}

void ModuleLink::onSnapshot(const QDBusMessage &reply)
{
    if (isExpected(reply))
        start(recordsOf(reply.arguments().value(0)));
}

void ModuleLink::start(const QVector<Record> &snapshot)
{
    m_isDenied = false;
    m_gone.stop();
    for (const Record &record : snapshot)
        putSignal(record.name, record.arguments);
    m_isMissingShown = m_missing.isEmpty();
    setStage(Stage::Connected);
    watchSilence();
}

void ModuleLink::onNoAnswer(const QDBusError &error, const QDBusMessage &call)
{
    if (m_owner.isEmpty() || call.service() != m_owner)
        return;
    if (isUnknown(error)) {
        onUnknownMethod(call.member());
        return;
    }
    // What the policy of the bus refuses looks like a silent module, and lasts.
    if (error.type() == QDBusError::AccessDenied && !std::exchange(m_isDenied, true))
        qWarning("vehicle module: %s: expected the right to call it: %s", qPrintable(call.member()),
                 qPrintable(error.message()));
    setStage(Stage::Silent);
    showMissing();
    m_retry.start(retryInterval);
}

void ModuleLink::onSignal(const QDBusMessage &message)
{
    if (m_stage == Stage::Silent)
        requestState();
    if (m_stage != Stage::Connected || message.service() != m_owner)
        return;
    putSignal(message.member(), message.arguments());
    watchSilence();
}

void ModuleLink::putSignal(const QString &name, QVariantList arguments)
{
    if (name == QLatin1String(featuresSignal)) {
        putFeatures(arguments);
        return;
    }
    const Interface::Member signal = m_client->m_interface.signal(name);
    if (signal.isValid() && fromWire(signal.method, &arguments))
        put({name, arguments});
    else
        refuse(name, signal.signature);
}

void ModuleLink::putFeatures(const QVariantList &arguments)
{
    const QVariant features = fromWire(arguments.value(2), qMetaTypeId<QMap<int, bool>>());
    if (features.isValid())
        put({QLatin1String(featuresSignal), {arguments[0], arguments[1], features}});
    else
        refuse(QLatin1String(featuresSignal), QStringLiteral("sia{ib}"));
}

/** One warning for each name, however many of them come. */
void ModuleLink::refuse(const QString &name, const QString &signature)
{
    if (m_refused.contains(name) || m_refused.size() >= mostWarnings)
        return;
    m_refused.insert(name);
    if (name == QLatin1String(featuresSignal) || m_client->m_interface.signal(name).isValid())
        qWarning("vehicle module: %s: expected arguments of type '%s'", qPrintable(name),
                 qPrintable(signature));
    else
        qWarning("vehicle module: %s: expected a signal of %s", qPrintable(name), interfaceName);
}

void ModuleLink::put(const Record &record)
{
    bool isFirst = false;
    if (record.name == m_client->m_urgentSignal && m_client->m_urgent.add(record, &isFirst) &&
        isFirst)
        QMetaObject::invokeMethod(m_client, &Client::deliverUrgent, Qt::QueuedConnection);
    if (!m_client->m_inbox.add(record, &isFirst)) {
        startAnew();
        return;
    }
    if (isFirst)
        QMetaObject::invokeMethod(m_client, qOverload<>(&Client::deliver), Qt::QueuedConnection);
}

/** The screens cannot keep up: what waits is dropped, and the state is requested when all is read.
 */
void ModuleLink::startAnew()
{
    m_client->m_inbox.clear();
    putState();
    m_stage = Stage::Asking;
    m_retry.start(afterFlood);
}

void ModuleLink::setStage(Stage stage)
{
    m_stage = stage;
    const Client::State state = stage == Stage::Connected ? Client::Connected : Client::Waiting;
    if (state == m_state)
        return;
    m_state = state;
    putState();
}

/** A record without a name is the state, in its place among the signals. */
void ModuleLink::putState()
{
    put({{}, {int(m_state)}});
}

void ModuleLink::showMissing()
{
    if (m_isMissingShown)
        return;
    m_isMissingShown = true;
    for (const Record &record : qAsConst(m_missing))
        putSignal(record.name, record.arguments);
}

bool ModuleLink::send(const QString &command, const QVariantList &arguments)
{
    const QMutexLocker lock(&m_mutex);
    if (m_owner.isEmpty())
        return false;
    QDBusMessage call = QDBusMessage::createMethodCall(m_owner, QLatin1String(objectPath),
                                                       QLatin1String(interfaceName), command);
    call.setArguments(arguments);
    QMetaObject::invokeMethod(this, &ModuleLink::watchSilence, Qt::QueuedConnection);
    return bus().send(call);
}

/** To the same connection as commands: they are handled before it. */
QDBusMessage ModuleLink::call(const QDBusMessage &method)
{
    QMutexLocker lock(&m_mutex);
    QDBusMessage call =
        QDBusMessage::createMethodCall(m_owner, method.path(), method.interface(), method.member());
    const QDBusConnection connection = bus();
    lock.unlock();
    call.setArguments(method.arguments());
    return connection.call(call);
}

/**
 * A module that is heard is left alone; after its promised period of silence it is asked, and again
 * that long after a command.
 */
void ModuleLink::watchSilence()
{
    m_heard.start();
    if (m_missingAfterMs > 0 && m_stage == Stage::Connected && !m_silence.isActive())
        m_silence.start(m_missingAfterMs);
}

void ModuleLink::onSilenceTimer()
{
    const qint64 silentMs = m_heard.elapsed();
    if (silentMs < m_missingAfterMs)
        m_silence.start(int(m_missingAfterMs - silentMs));
    else
        ask(pingMethod, SLOT(onAlive(QDBusMessage)), qMax(m_missingAfterMs, shortestPingMs));
}

/** Nothing more is asked until the module has sent something again. */
void ModuleLink::onAlive(const QDBusMessage & /*reply*/) {}

} // namespace bus
