#pragma once

#include "busconnection.h"

#include <QObject>

class QDBusMessage;

namespace moduled {

/**
 * Emits the module's signals that other programs send on the bus, so that a command line can take
 * the module's part.
 */
class Relay : public QObject
{
    Q_OBJECT
public:
    /** Connects to the bus where the module has its name. */
    void open(const QString &address);

private slots: // the bus calls it by name
    void onSignal(const QDBusMessage &message);
    void onDisconnected() {}

private:
    bus::BusConnection m_connection;
    QString m_module; // the module's own connection
};

} // namespace moduled
