#include "busconnection.h"

#include <QAtomicInt>

namespace bus {

/** A program and a library in it each have a copy of this code, and Qt knows all names of both. */
static QString newName()
{
    static QAtomicInt count;
    return QStringLiteral("norda-module-%1-%2")
        .arg(quintptr(&count), 0, 16)
        .arg(count.fetchAndAddRelaxed(1));
}

static QDBusConnection connection(const QString &address, const QString &name)
{
    if (address == QLatin1String("session"))
        return QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
    if (address == QLatin1String("system"))
        return QDBusConnection::connectToBus(QDBusConnection::SystemBus, name);
    return QDBusConnection::connectToBus(address, name);
}

BusConnection::BusConnection() : m_name(newName()), m_bus(QString())
{
    // The library ends the process when a bus accepts a connection and then refuses its greeting:
    // Qt drops such a connection without closing it.
    static constexpr char fatalWarnings[] = "DBUS_FATAL_WARNINGS";
    if (!qEnvironmentVariableIsSet(fatalWarnings))
        qputenv(fatalWarnings, "0");
}

BusConnection::~BusConnection()
{
    QDBusConnection::disconnectFromBus(m_name);
}

bool BusConnection::open(const QString &address)
{
    QDBusConnection::disconnectFromBus(m_name);
    m_name = newName();
    m_bus = connection(address, m_name);
    return m_bus.isConnected();
}

bool BusConnection::open(const QString &address, QObject *receiver, const char *disconnectedSlot)
{
    return open(address) &&
           m_bus.connect({}, QStringLiteral("/org/freedesktop/DBus/Local"),
                         QStringLiteral("org.freedesktop.DBus.Local"),
                         QStringLiteral("Disconnected"), receiver, disconnectedSlot);
}

} // namespace bus
