#include "relay.h"

#include "adaptorlink.h"
#include "interface.h"
#include "metacall.h"
#include "wirevalues.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace moduled {

void Relay::open(const QString &address)
{
    if (!m_connection.open(address, this, SLOT(onDisconnected())))
        return;
    QDBusConnection &bus = m_connection.bus();
    m_module = bus.interface()->serviceOwner(QLatin1String(bus::serviceName));
    bus.connect({}, QLatin1String(bus::objectPath), QLatin1String(bus::interfaceName), {}, this,
                SLOT(onSignal(QDBusMessage)));
}

void Relay::onSignal(const QDBusMessage &message)
{
    const module::ModuleSignal signal = module::moduleSignal(message.member().toLatin1());
    QVariantList arguments = message.arguments();
    if (message.service() == m_module)
        return;
    if (signal.emitter && bus::fromWire(signal.method, &arguments))
        bus::invokeMethod(signal.emitter, signal.method, arguments);
    else
        qWarning("%s: expected a signal of %s with its arguments", qPrintable(message.member()),
                 bus::interfaceName);
}

} // namespace moduled
