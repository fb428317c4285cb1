#include "canobdlink.h"

#include <QCanBus>
#include <QFileInfo>
#include <QVariant>

namespace module {

CanObdLink::CanObdLink(const CanPort &port) : m_port(port) {}

CanObdLink::~CanObdLink()
{
    if (m_device)
        m_device->disconnect(this);
}

QString CanObdLink::description() const
{
    return QStringLiteral("CAN bus %1").arg(m_port.interface);
}

/** Of the kernel's interfaces it is known which there are. */
static bool isInterface(const CanPort &port)
{
    return port.plugin != QLatin1String("socketcan") ||
           QFileInfo::exists(QStringLiteral("/sys/class/net/") + port.interface);
}

void CanObdLink::open()
{
    QString error = QStringLiteral("expected a CAN interface, found nothing");
    m_isOpen = true;
    m_tester = CanTester();
    if (isInterface(m_port))
        connectDevice(&error);
    if (!m_device)
        lose(error);
}

void CanObdLink::connectDevice(QString *error)
{
    m_device.reset(QCanBus::instance()->createDevice(m_port.plugin, m_port.interface, error));
    if (!m_device)
        return;
    connect(m_device.get(), &QCanBusDevice::stateChanged, this, &CanObdLink::onStateChanged);
    connect(m_device.get(), &QCanBusDevice::errorOccurred, this, &CanObdLink::onError);
    connect(m_device.get(), &QCanBusDevice::framesReceived, this, &CanObdLink::readFrames);
    if (m_port.bitrate > 0)
        m_device->setConfigurationParameter(QCanBusDevice::BitRateKey, m_port.bitrate);
    if (!m_device->connectDevice())
        lose(m_device->errorString());
}

void CanObdLink::onStateChanged(QCanBusDevice::CanBusDeviceState state)
{
    if (!m_isOpen)
        return;
    if (state == QCanBusDevice::ConnectedState)
        emit ready();
    else if (state == QCanBusDevice::UnconnectedState)
        lose(m_device->errorString());
}

/** A frame that nobody takes is no reason to give up the bus: the car may be asleep. */
void CanObdLink::onError(QCanBusDevice::CanBusError error)
{
    if (error == QCanBusDevice::ConnectionError || error == QCanBusDevice::ReadError)
        lose(m_device->errorString());
}

void CanObdLink::close()
{
    m_isOpen = false;
    schedule(-1);
    if (m_device && m_device->state() != QCanBusDevice::UnconnectedState)
        m_device->disconnectDevice();
}

void CanObdLink::lose(const QString &why)
{
    if (!m_isOpen)
        return;
    close();
    emit lost(why.simplified());
}

void CanObdLink::readFrames()
{
    const QVector<QCanBusFrame> frames = m_device->readAllFrames();
    for (const QCanBusFrame &received : frames) {
        if (received.frameType() != QCanBusFrame::DataFrame || received.hasLocalEcho())
            continue;
        const CanFrame frame = {received.frameId(), received.hasExtendedFrameFormat(),
                                received.payload()};
        emit frameSeen(frame, false);
        m_tester.receive(frame, nowMs());
    }
    passOn();
}

void CanObdLink::ask(const ObdRequest &request)
{
    m_tester.ask(request, nowMs());
    passOn();
}

void CanObdLink::advance()
{
    m_tester.advance(nowMs());
    passOn();
}

/** What the tester wants to send, and what has become of its request. */
void CanObdLink::passOn()
{
    const QVector<CanFrame> frames = m_tester.takeFrames();
    for (const CanFrame &frame : frames) {
        QCanBusFrame sent(frame.id, frame.data);
        sent.setExtendedFrameFormat(frame.isExtended);
        if (m_isOpen && m_device->writeFrame(sent))
            emit frameSeen(frame, true);
    }
    schedule(m_tester.nextDueMs());
    const QVector<ObdEvent> events = m_tester.takeEvents();
    for (const ObdEvent &event : events)
        report(event);
}

} // namespace module
