#include "elm327link.h"

#include <QFileInfo>
#include <QTcpSocket>

namespace module {

Elm327Link::Elm327Link(const ElmPort &port) : m_port(port) {}

Elm327Link::~Elm327Link()
{
    if (m_device)
        m_device->disconnect(this);
}

QString Elm327Link::description() const
{
    const QString where = m_port.device.isEmpty()
                              ? QStringLiteral("%1:%2").arg(m_port.host).arg(m_port.port)
                              : m_port.device;
    const QString name = m_adapter.name().isEmpty() ? QStringLiteral("ELM327") : m_adapter.name();
    return QStringLiteral("%1 at %2").arg(name, where);
}

void Elm327Link::open()
{
    m_isOpen = true;
    if (m_port.device.isEmpty())
        openSocket();
    else
        openSerialPort();
}

void Elm327Link::openSerialPort()
{
    auto port = std::make_unique<QSerialPort>(m_port.device);
    port->setBaudRate(m_port.baud);
    if (!port->open(QIODevice::ReadWrite)) {
        lose(serialProblem(*port));
        return;
    }
    connect(port.get(), &QSerialPort::errorOccurred, this, &Elm327Link::onSerialError);
    connect(port.get(), &QSerialPort::readyRead, this, &Elm327Link::readBytes);
    port->clear();
    m_device = std::move(port);
    begin();
}

QString Elm327Link::serialProblem(const QSerialPort &port) const
{
    const QFileInfo file(m_port.device);
    if (!file.exists())
        return QStringLiteral("expected a serial port, found nothing");
    if (file.isFile() || file.isDir())
        return QStringLiteral("expected a serial port, found a file or a folder");
    if (!file.isReadable() || !file.isWritable())
        return QStringLiteral("no permission to use it; its group '%1' has it").arg(file.group());
    if (port.error() == QSerialPort::PermissionError)
        return QStringLiteral("another program uses it");
    return QStringLiteral("expected a serial port: %1").arg(port.errorString());
}

void Elm327Link::onSerialError(QSerialPort::SerialPortError error)
{
    if (error == QSerialPort::ResourceError || error == QSerialPort::ReadError ||
        error == QSerialPort::WriteError)
        lose(QStringLiteral("the serial port is gone"));
}

void Elm327Link::openSocket()
{
    auto socket = std::make_unique<QTcpSocket>();
    connect(socket.get(), &QTcpSocket::connected, this, &Elm327Link::begin);
    connect(socket.get(), &QTcpSocket::readyRead, this, &Elm327Link::readBytes);
    connect(socket.get(), &QAbstractSocket::errorOccurred, this, &Elm327Link::onSocketError);
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    QTcpSocket *const connecting = socket.get();
    m_device = std::move(socket);
    connecting->connectToHost(m_port.host, m_port.port); // which may fail at once
}

void Elm327Link::onSocketError()
{
    lose(m_device->errorString());
}

void Elm327Link::begin()
{
    m_adapter.start(nowMs());
    passOn();
}

void Elm327Link::readBytes()
{
    m_adapter.receive(m_device->readAll(), nowMs());
    passOn();
}

void Elm327Link::ask(const ObdRequest &request)
{
    static constexpr quint32 toAll = 0x7DF;
    emit frameSeen({toAll, false, char(request.message.size()) + request.message}, true);
    m_adapter.ask(request, nowMs());
    passOn();
}

void Elm327Link::advance()
{
    m_adapter.advance(nowMs());
    passOn();
}

/** What the conversation wants to send, and what has become of the request. */
void Elm327Link::passOn()
{
    if (!m_isOpen)
        return;
    const QByteArray bytes = m_adapter.takeBytes();
    if (!bytes.isEmpty())
        m_device->write(bytes);
    schedule(m_adapter.nextDueMs());
    const QVector<CanFrame> frames = m_adapter.takeSeenFrames();
    for (const CanFrame &frame : frames)
        emit frameSeen(frame, false);
    const QVector<ObdEvent> events = m_adapter.takeEvents();
    for (const ObdEvent &event : events) {
        if (event.kind == ObdEvent::Lost)
            lose(event.text);
        else
            report(event);
    }
}

void Elm327Link::close()
{
    m_isOpen = false;
    schedule(-1);
    if (!m_device)
        return;
    m_device->disconnect(this);
    m_device->close();
}

void Elm327Link::lose(const QString &why)
{
    if (!m_isOpen)
        return;
    close();
    emit lost(why.simplified());
}

} // namespace module
