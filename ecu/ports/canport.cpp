#include "ports/canport.h"

#include "live/canportname.h"

#include <QCanBus>
#include <QVariant>

namespace ecu {

CanPort::CanPort(const QString &name, QObject *parent) : QObject(parent), m_name(name) {}

CanPort::~CanPort()
{
    if (!m_device)
        return;
    m_device->disconnect(this);
    if (m_device->state() != QCanBusDevice::UnconnectedState)
        m_device->disconnectDevice();
}

bool CanPort::open(QString *error)
{
    const auto port = module::canPortOf(m_name);
    const QStringList plugins = QCanBus::instance()->plugins();
    if (!port || !plugins.contains(port->plugin)) {
        *error = QStringLiteral("--can: expected PLUGIN:INTERFACE[?bitrate=N] with a plugin of %1, "
                                "got '%2'")
                     .arg(plugins.join(QStringLiteral(", ")), m_name);
        return false;
    }
    QString reason;
    m_device.reset(QCanBus::instance()->createDevice(port->plugin, port->interface, &reason));
    if (m_device) {
        if (port->bitrate > 0)
            m_device->setConfigurationParameter(QCanBusDevice::BitRateKey, port->bitrate);
        connect(m_device.get(), &QCanBusDevice::framesReceived, this, &CanPort::read);
        connect(m_device.get(), &QCanBusDevice::stateChanged, this, &CanPort::onState);
        m_isOpen = m_device->connectDevice();
        if (m_isOpen)
            return true;
        reason = m_device->errorString();
    }
    *error = QStringLiteral("--can: %1: %2").arg(m_name, reason);
    return false;
}

void CanPort::onState(QCanBusDevice::CanBusDeviceState state)
{
    if (state == QCanBusDevice::ConnectedState)
        emit connected();
    else if (state == QCanBusDevice::UnconnectedState && m_isOpen)
        emit failed(QStringLiteral("--can: %1: %2").arg(m_name, m_device->errorString()));
}

void CanPort::read()
{
    while (m_device->framesAvailable() > 0) {
        const QCanBusFrame frame = m_device->readFrame();
        if (frame.frameType() == QCanBusFrame::DataFrame)
            emit received({frame.frameId(), frame.hasExtendedFrameFormat(), frame.payload()});
    }
}

void CanPort::send(const module::CanFrame &frame)
{
    if (m_device->state() != QCanBusDevice::ConnectedState)
        return;
    QCanBusFrame out(frame.id, frame.data);
    out.setExtendedFrameFormat(frame.isExtended);
    m_device->writeFrame(out);
}

} // namespace ecu
