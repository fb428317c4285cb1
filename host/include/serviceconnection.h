#pragma once

#include "nordahost_global.h"

#include <QMap>
#include <QObject>
#include <QVariant>

namespace bus {
class Client;
}

/**
 * The reference host's link to the vehicle module.
 *
 * Without an address the module lives in this process and emits the adaptor's signals itself. With
 * one, `norda::VtqAdaptor::connectService()` connects to the module of another process over D-Bus:
 * its signals are emitted by the adaptor, and the plugin's commands are sent to it. Nothing here
 * waits for the bus or the module. A module that goes, falls silent or comes back is noticed; on
 * each return its whole state is requested again.
 *
 * Reached by name with `nordaHostObject("ServiceConnection")`.
 */
class NORDAHOST_EXPORT ServiceConnection : public QObject
{
    Q_OBJECT
    /** How the link is now. */
    Q_PROPERTY(State state READ state NOTIFY stateChanged)
public:
    /** How the link is. */
    enum State {
        InProcess, ///< no address is set
        Waiting,   ///< no module, or one that does not answer: touches are dropped
        Connected  ///< the module's state has arrived
    };
    Q_ENUM(State)

    /** The one object: made on the first call, never null, never deleted. */
    static ServiceConnection *instance();

    /** How the link is now. */
    State state() const { return m_state; }

    /**
     * Where the module is: "session", "system" or the address of a bus; empty for a module in this
     * process. At first the value of `NORDA_MODULE_BUS`. Takes effect with the next
     * `connectService()`.
     */
    Q_INVOKABLE
    void setAddress(const QString &address);
    /** Where the module is, as it was set. */
    QString address() const { return m_address; }

    /**
     * Calls a method in the module's process and waits for the answer; what the module sent before
     * it has been emitted when this returns. For a bench whose clock stands still meanwhile: a unit
     * never waits.
     * @param path, interface, method  the object's, as D-Bus names them
     * @param arguments                of types that D-Bus carries
     * @param error                    one line, when there is no answer
     */
    QVariantList call(const QString &path, const QString &interface, const QString &method,
                      const QVariantList &arguments, QString *error);

    /** Connects; called by `norda::VtqAdaptor::connectService()`. */
    void open();

signals:
    /** The link has another state. After `Connected` the pages show what the module knows. */
    void stateChanged(ServiceConnection::State state);
    /**
     * The module of another process has sent `checkGearPositionStatus`. The adaptor emits it once
     * it has emitted what was sent before; this is for a camera that cannot wait so long.
     * @param gear  the module's code
     */
    void gearAnnounced(int gear);

private:
    ServiceConnection();
    void setState(State state);
    void sendCommand(const QString &operation, QVariantList arguments);
    void repeatRequests();

    QString m_address;
    bus::Client *m_client = nullptr;
    QMap<QString, QVariantList> m_requests; ///< the pages' last ones, by command
    State m_state = InProcess;
};
