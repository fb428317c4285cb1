#pragma once

#include "live/elm327.h"
#include "live/timedlink.h"

#include <QAbstractSocket>
#include <QSerialPort>

#include <memory>

namespace module {

/** Where an adapter is: a serial port, or a port of a host. */
struct ElmPort
{
    static constexpr int UsualBaud = 38400;

    QString device; ///< empty for a host
    int baud = UsualBaud;
    QString host;
    quint16 port = 0;
};

/** Asks a car through an ELM327 adapter. */
class Elm327Link : public TimedLink
{
    Q_OBJECT
public:
    explicit Elm327Link(const ElmPort &port);
    ~Elm327Link() override;

    void open() override;
    void close() override;
    void ask(const ObdRequest &request) override;
    bool isListening() const override { return false; }
    QString description() const override;

protected:
    void advance() override;

private:
    void openSerialPort();
    void openSocket();
    QString serialProblem(const QSerialPort &port) const;
    void onSerialError(QSerialPort::SerialPortError error);
    void onSocketError();
    void begin();
    void readBytes();
    void passOn();
    void lose(const QString &why);

    ElmPort m_port;
    std::unique_ptr<QIODevice> m_device;
    Elm327 m_adapter;
    bool m_isOpen = false; // open() was called, and it was not lost since
};

} // namespace module
