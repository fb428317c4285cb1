#include "service/moduleservice.h"

#include "adaptorlink.h"
#include "metacall.h"
#include "norda/vtqservice.h"
#include "service/moduleinterface.h"
#include "silence.h"
#include "unknownvalues.h"
#include "wirevalues.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QMap>

#include <chrono>

namespace module {

using namespace std::chrono_literals;

static constexpr auto retryInterval = 500ms; // while there is no bus

ModuleService::ModuleService(QObject *parent)
    : QDBusVirtualObject(parent)
    , m_tap(moduleEmitters(), [this](const QByteArray &name,
                                     const QVariantList &arguments) { onSignal(name, arguments); })
    , m_featuresSent(norda::VtqService::instance()->featuresRevision())
{
    bus::registerWireTypes();
    connect(&m_retry, &QTimer::timeout, this, &ModuleService::reconnect);
}

ModuleService::~ModuleService() = default;

// ---- The bus ------------------------------------------------------------------------------------

bool ModuleService::open(const QString &address, QString *error)
{
    m_address = address;
    return takeName(error);
}

bool ModuleService::takeName(QString *error)
{
    static const QString name = QLatin1String(bus::serviceName);
    QDBusConnection &bus = m_connection.bus();
    if (!m_connection.open(m_address, this, SLOT(onDisconnected()))) {
        *error = QStringLiteral("%1: expected a D-Bus, got '%2'")
                     .arg(m_address, bus.lastError().message());
        return false;
    }
    bus.registerVirtualObject(QLatin1String(bus::objectPath), this);
    if (bus.registerService(name))
        return true;
    const QString reason = bus.lastError().message();
    *error = reason.isEmpty()
                 ? QStringLiteral("%1: expected a free name, another module has it").arg(name)
                 : QStringLiteral("%1: expected the right to own it, got '%2'").arg(name, reason);
    return false;
}

bool ModuleService::addObject(const QString &path, QObject *object)
{
    return m_connection.bus().registerObject(path, object, QDBusConnection::ExportAllSlots);
}

void ModuleService::onDisconnected()
{
    emit lost(true);
    m_retry.start(retryInterval);
}

void ModuleService::reconnect()
{
    QString ignored;
    if (!takeName(&ignored))
        return;
    m_retry.stop();
    emit lost(false);
}

// ---- Signals ------------------------------------------------------------------------------------

void ModuleService::send(const bus::Record &signal)
{
    QDBusMessage message = QDBusMessage::createSignal(
        QLatin1String(bus::objectPath), QLatin1String(bus::interfaceName), signal.name);
    message.setArguments(signal.arguments);
    m_connection.bus().send(message);
}

void ModuleService::onSignal(const QByteArray &name, const QVariantList &arguments)
{
    const bus::Record signal = {QString::fromLatin1(name), arguments};
    m_state.add(name, arguments, signal);
    sendFeatures();
    send(signal);
}

/** What each query of the features answers, for each of its groups. */
static QVector<bus::Record> features()
{
    static constexpr struct
    {
        const char *query;
        int groups;
    } queries[] = {{"getFrontClimateControlFeatures", 2},
                   {"getRearClimateControlFeatures", 2},
                   {"getParkingAssistZones", 1}};
    QVector<bus::Record> records;
    for (const auto &row : queries) {
        for (int group = 0; group < row.groups; ++group) {
            const QMap<int, bool> answer =
                norda::VtqService::instance()->featuresOf(row.query, group);
            records.append({QLatin1String(bus::featuresSignal),
                            {QLatin1String(row.query), group, QVariant::fromValue(answer)}});
        }
    }
    return records;
}

/** Before the signals of a module that has another equipment now. */
void ModuleService::sendFeatures()
{
    const int revision = norda::VtqService::instance()->featuresRevision();
    if (revision == m_featuresSent)
        return;
    m_featuresSent = revision;
    const QVector<bus::Record> all = features();
    for (const bus::Record &record : all)
        send(record);
}

// ---- Calls --------------------------------------------------------------------------------------

QString ModuleService::introspectionXml()
{
    return QStringLiteral("<!DOCTYPE node PUBLIC \"-//freedesktop//DTD D-BUS Object Introspection "
                          "1.0//EN\"\n \"http://www.freedesktop.org/standards/dbus/1.0/"
                          "introspect.dtd\">\n<node>\n%1</node>\n")
        .arg(moduleInterface().xml());
}

QString ModuleService::introspect(const QString & /*path*/) const
{
    return moduleInterface().xml();
}

bool ModuleService::handleMessage(const QDBusMessage &message, const QDBusConnection &bus)
{
    if (message.interface() != QLatin1String(bus::interfaceName))
        return false;
    const QDBusMessage answer = answerTo(message);
    if (message.isReplyRequired())
        bus.send(answer);
    return true;
}

/** The features first: what is drawn depends on them. */
QVariantList ModuleService::snapshot() const
{
    return {QVariant::fromValue(features() + m_state.items())};
}

/** The module that is gone neither speaks nor knows any value. */
static QVariantList missingValues()
{
    QVector<bus::Record> records = {
        {QStringLiteral("audioInterruptNotify"),
         {QVariant::fromValue(uchar(0)), QVariant::fromValue(uchar(0))}}};
    const QVector<Emission> unknown = unknownValues({});
    for (const Emission &emission : unknown)
        records.append({QString::fromLatin1(emission.signal), emission.arguments});
    return {uint(longestSilenceMs(0)), QVariant::fromValue(records)};
}

QDBusMessage ModuleService::answerTo(const QDBusMessage &message)
{
    const QString name = message.member();
    if (name == QLatin1String(bus::snapshotMethod))
        return message.createReply(snapshot());
    if (name == QLatin1String(bus::missingValuesMethod))
        return message.createReply(missingValues());
    if (name == QLatin1String(bus::pingMethod))
        return message.createReply();
    return call(message);
}

QDBusMessage ModuleService::call(const QDBusMessage &message)
{
    const bus::Interface::Member command = moduleInterface().command(message.member());
    if (!command.isValid())
        return message.createErrorReply(
            QDBusError::UnknownMethod,
            QStringLiteral("%1: expected a command of %2")
                .arg(message.member(), QLatin1String(bus::interfaceName)));
    QVariantList arguments = message.arguments();
    if (message.signature() != command.signature || !bus::fromWire(command.method, &arguments))
        return message.createErrorReply(
            QDBusError::InvalidArgs,
            QStringLiteral("%1: expected arguments of type '%2', got '%3'")
                .arg(message.member(), command.signature, message.signature()));
    const QVariant result =
        bus::invokeMethod(moduleEmitters().at(command.place), command.method, arguments);
    return result.isValid() ? message.createReply(result) : message.createReply();
}

} // namespace module
