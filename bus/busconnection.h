#pragma once

#include <QDBusConnection>
#include <QString>

class QObject;

namespace bus {

/** A connection of its own to a bus; it ends with this object. */
class BusConnection
{
public:
    BusConnection();
    ~BusConnection();
    Q_DISABLE_COPY(BusConnection)

    /**
     * Ends the present connection and makes a new one.
     * @param address  "session", "system", or the address of a bus
     * @return whether there is a bus; `bus().lastError()` says why not
     */
    bool open(const QString &address);
    /** The same. @param receiver  whose slot is invoked when the bus ends the connection */
    bool open(const QString &address, QObject *receiver, const char *disconnectedSlot);

    QDBusConnection &bus() { return m_bus; }

private:
    QString m_name; // by which this process knows the connection
    QDBusConnection m_bus;
};

} // namespace bus
