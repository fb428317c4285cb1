#pragma once

#include "live/canobdlink.h"
#include "live/elm327link.h"

#include <QCanBus>
#include <QCanBusDevice>
#include <QSocketNotifier>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include <fcntl.h>
#include <memory>
#include <pty.h>
#include <unistd.h>

Q_DECLARE_METATYPE(module::CanFrame)

/** A port that nobody uses. */
inline quint16 freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

/** A CAN bus within this process, with a device of the test on it. */
class VirtualBus
{
public:
    explicit VirtualBus(const module::CanPort &port = {QStringLiteral("virtualcan"), interface(),
                                                       0})
        : m_port(port)
    {
        m_device.reset(QCanBus::instance()->createDevice(m_port.plugin, m_port.interface));
        if (!m_device || !m_device->connectDevice())
            qFatal("no virtual CAN bus");
        if (!QTest::qWaitFor([this] { return m_device->state() == QCanBusDevice::ConnectedState; }))
            qFatal("the virtual CAN bus does not connect");
    }

    const module::CanPort &port() const { return m_port; }

    void send(quint32 id, const char *hex)
    {
        QCanBusFrame frame(id, QByteArray::fromHex(hex));
        frame.setExtendedFrameFormat(id > 0x7FF);
        m_device->writeFrame(frame);
    }

    /** What others have sent so far, as "7e0#02010c". */
    const QByteArrayList &received()
    {
        for (const QCanBusFrame &frame : m_device->readAllFrames())
            m_received.append(QByteArray::number(frame.frameId(), 16) + '#' +
                              frame.payload().toHex());
        return m_received;
    }

private:
    // The server of a process serves one port as long as it runs.
    static QString interface()
    {
        static const quint16 port = freePort();
        return QStringLiteral("tcp://127.0.0.1:%1/can0").arg(port);
    }

    module::CanPort m_port;
    std::unique_ptr<QCanBusDevice> m_device;
    QByteArrayList m_received;
};

/** An adapter with a car that idles, at a pseudo terminal or a local port. */
class FakeAdapter
{
public:
    explicit FakeAdapter(bool isSerial) : m_isSerial(isSerial) { plugIn(); }
    ~FakeAdapter() { unplug(); }

    module::ElmPort port() const { return m_port; }

    void plugIn()
    {
        if (m_isSerial)
            openTerminal();
        else
            listen();
    }

    void unplug()
    {
        m_notifier.reset();
        if (m_terminal >= 0) {
            ::close(m_terminal);
            QFile::remove(m_port.device);
        }
        m_terminal = -1;
        delete m_client;
        m_server.reset();
    }

    /** By the command, without spaces. */
    // clang-format off
    QMap<QByteArray, QByteArray> answers = {
        {"ATZ",  "ELM327 v1.5"},
        {"0100", "7E8064100981A8001"},
        {"0120", "7E806412000000001"},
        {"0140", "7E806414040000000"},
        {"0101", "7E806410100000000"},
        {"0104", "7E803410480"},
        {"0105", "7E803410578"},
        {"010C", "7E804410C1AF8"},
        {"010D", "7E803410D20"},
        {"010F", "7E803410F40"},
        {"0142", "7E804414230D4"},
        {"03",   "7E8024300"},
    };
    // clang-format on
    bool isSilent = false;
    QByteArrayList commands;

private:
    void openTerminal()
    {
        int terminal = -1;
        char name[64];
        if (::openpty(&m_terminal, &terminal, name, nullptr, nullptr) != 0)
            qFatal("no pseudo terminal");
        ::close(terminal);
        ::fcntl(m_terminal, F_SETFL, O_NONBLOCK);
        // Each has another name; the port keeps its own, as a rule of the system would.
        m_port.device = m_folder.filePath(QStringLiteral("tty"));
        QFile::remove(m_port.device);
        QFile::link(QString::fromLatin1(name), m_port.device);
        m_notifier = std::make_unique<QSocketNotifier>(m_terminal, QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] {
            char bytes[256];
            const auto count = ::read(m_terminal, bytes, sizeof bytes);
            if (count > 0)
                take(QByteArray(bytes, int(count)));
            else
                QThread::msleep(1); // nobody has it open
        });
    }

    void listen()
    {
        m_server = std::make_unique<QTcpServer>();
        if (!m_server->listen(QHostAddress::LocalHost, m_port.port))
            qFatal("no local port");
        m_port.host = QStringLiteral("127.0.0.1");
        m_port.port = m_server->serverPort();
        QObject::connect(m_server.get(), &QTcpServer::newConnection, m_server.get(), [this] {
            m_client = m_server->nextPendingConnection();
            QObject::connect(m_client.data(), &QTcpSocket::readyRead, m_client.data(),
                             [this] { take(m_client->readAll()); });
        });
    }

    void take(const QByteArray &bytes)
    {
        m_bytes += bytes;
        for (int end = m_bytes.indexOf('\r'); end >= 0; end = m_bytes.indexOf('\r')) {
            const QByteArray command = m_bytes.left(end);
            m_bytes.remove(0, end + 1);
            commands.append(command);
            if (!isSilent)
                reply(answerTo(command) + "\r\r>");
        }
    }

    QByteArray answerTo(QByteArray command) const
    {
        if (!answers.contains(command) && command.size() == 5)
            command.chop(1); // the number of frames
        const QByteArray other = command.startsWith("AT") ? "OK" : "NO DATA";
        return answers.value(command, other);
    }

    void reply(const QByteArray &bytes)
    {
        if (m_client)
            m_client->write(bytes);
        else if (::write(m_terminal, bytes.constData(), size_t(bytes.size())) != bytes.size())
            qWarning("the pseudo terminal is full");
    }

    bool m_isSerial;
    QTemporaryDir m_folder;
    module::ElmPort m_port;
    int m_terminal = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::unique_ptr<QTcpServer> m_server;
    QPointer<QTcpSocket> m_client;
    QByteArray m_bytes;
};
