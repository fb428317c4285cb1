#pragma once

#include "ports/lineport.h"

#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

namespace ecu {

/** A TCP port of the loopback interface, as of an adapter with its own network; for one client. */
class TcpPort : public LinePort
{
    Q_OBJECT
public:
    /** @param port  0 for any that is free */
    explicit TcpPort(int port, QObject *parent = nullptr);
    ~TcpPort() override;

    bool open(QString *error) override;
    void close() override;
    QString name() const override;
    void write(const QByteArray &characters) override;

private:
    void accept();
    bool hasClient() const;

    QTcpServer m_server;
    QPointer<QTcpSocket> m_client;
    int m_port;
};

} // namespace ecu
