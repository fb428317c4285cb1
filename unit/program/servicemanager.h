#pragma once

#include <QBasicTimer>
#include <QObject>

/**
 * Reports to the service manager that started the program, in datagrams to its `NOTIFY_SOCKET`.
 * With a watchdog it also reports that the event loop is alive, twice in the time that
 * `WATCHDOG_USEC` allows. Without a manager nothing is sent and nothing wakes.
 */
class ServiceManager : public QObject
{
    Q_OBJECT
public:
    explicit ServiceManager(QObject *parent = nullptr);
    ~ServiceManager() override;

    /** The program does its work from now on; the watchdog begins. */
    void reportReady();
    void reportStopping();
    /** What the program does, in one line for a person. */
    void setStatus(const QString &text);

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void send(const QByteArray &message) const;

    QByteArray m_address; // of the socket; empty for no manager
    QByteArray m_status;
    int m_watchdogMs; // between two reports, 0 for no watchdog
    QBasicTimer m_watchdog;
};
