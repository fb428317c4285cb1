#pragma once

#include "inbox.h"

#include <QDBusMessage>
#include <QObject>
#include <QThread>
#include <QTimer>

namespace bus {

class Interface;
class ModuleLink;

/**
 * The other end of a vehicle module in another process. Connecting, waiting and decoding happen in
 * a thread of its own; signals arrive in the thread of this object, a few milliseconds of them at a
 * time, so that a flood does not keep it from anything else.
 */
class Client : public QObject
{
    Q_OBJECT
public:
    enum State {
        Waiting,  ///< no bus, no module, or one that does not answer
        Connected ///< the snapshot has arrived
    };
    Q_ENUM(State)

    /** @param interface  has to outlive this object */
    explicit Client(const Interface &interface, QObject *parent = nullptr);
    ~Client() override;

    /**
     * Connects now or as soon as there is something to connect to.
     * @param address  "session", "system", or the address of a bus
     */
    void open(const QString &address);
    void close();
    /** The signal that `urgentReceived()` reports. To be set before opening. */
    void setUrgent(const QString &signal) { m_urgentSignal = signal; }

    State state() const { return m_state; }
    /** Sends a command; drops it while there is no module. @param arguments  of its types */
    void send(const QString &command, const QVariantList &arguments);
    /**
     * Calls a method of the module's process and waits for the answer. The signals that the module
     * sent before it have been received when this returns. For a bench whose clock stands still
     * meanwhile; a unit never waits.
     * @param method  with its object and interface; where it goes is filled in
     */
    QDBusMessage call(const QDBusMessage &method);

signals:
    void stateChanged(bus::Client::State state);
    /** A signal of the module, or one of those that show its values as missing. */
    void received(const QString &signal, const QVariantList &arguments);
    /** The urgent signal has arrived: ahead of `received()`, where it follows in its turn. */
    void urgentReceived(const QVariantList &arguments);
    /** What a query answers from now on. */
    void featuresReceived(const QString &query, const QVariantList &arguments);

private:
    friend class ModuleLink;

    void deliver();
    bool deliverNext();
    void deliver(const Record &record);
    void deliverUrgent();

    const Interface &m_interface;
    QString m_urgentSignal;
    Inbox m_urgent;
    Inbox m_inbox;
    QVector<Record> m_waiting; // taken from the inbox
    int m_next = 0;            // of these
    QTimer m_turn;
    QThread m_thread;
    ModuleLink *m_link = nullptr; // lives in the thread
    State m_state = Waiting;
};

} // namespace bus
