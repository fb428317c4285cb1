#include "ports/tcpport.h"

namespace ecu {

TcpPort::TcpPort(int port, QObject *parent) : LinePort(parent), m_port(port)
{
    connect(&m_server, &QTcpServer::newConnection, this, &TcpPort::accept);
}

TcpPort::~TcpPort()
{
    close();
}

bool TcpPort::open(QString *error)
{
    if (m_server.listen(QHostAddress::LocalHost, quint16(m_port))) {
        m_port = m_server.serverPort(); // the same one when it is opened again
        return true;
    }
    *error = QStringLiteral("--tcp: expected a port that is free, got %1: %2")
                 .arg(m_port)
                 .arg(m_server.errorString());
    return false;
}

void TcpPort::close()
{
    m_server.close();
    if (m_client)
        m_client->abort();
    delete m_client;
}

QString TcpPort::name() const
{
    return QStringLiteral("127.0.0.1:%1").arg(m_port);
}

/** One that left just now may not be noticed yet. */
bool TcpPort::hasClient() const
{
    static constexpr int reads = 2; // what it sent, and then its end
    for (int i = 0; i < reads && m_client; ++i)
        m_client->waitForReadyRead(0);
    return m_client && m_client->state() == QAbstractSocket::ConnectedState;
}

/** A second client finds the adapter taken. */
void TcpPort::accept()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        if (hasClient()) {
            socket->abort();
            continue;
        }
        m_client = socket;
        connect(socket, &QTcpSocket::readyRead, this,
                [this, socket] { emit received(socket->readAll()); });
    }
}

void TcpPort::write(const QByteArray &characters)
{
    if (m_client)
        m_client->write(characters);
}

} // namespace ecu
