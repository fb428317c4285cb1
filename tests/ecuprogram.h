#pragma once

#include "backgroundprogram.h"
#include "program.h"

#include <QElapsedTimer>

#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

/** norda-ecu in a process of its own. */
class EcuProgram : public BackgroundProgram
{
public:
    explicit EcuProgram(const QString &options)
        : BackgroundProgram(command() + QLatin1Char(' ') + options)
    {
    }

    static QString command() { return BackgroundProgram::command(QStringLiteral("norda-ecu")); }

    /** Waits until it has printed where it serves. @return the place; empty when it never did */
    QString place(const QString &kind, int nth = 0) const
    {
        return lineWith(kind + QLatin1Char(' '), nth);
    }
};

/** A client at the other end of an adapter's line. */
class LineClient
{
public:
    static LineClient terminal(const QString &name)
    {
        return LineClient(::open(qPrintable(name), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    }
    static LineClient port(const QString &place)
    {
        const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(place.section(':', 1).toUShort());
        if (::connect(socket, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0)
            return LineClient(socket);
        ::close(socket);
        return LineClient(-1);
    }
    LineClient(LineClient &&other) noexcept : m_line(std::exchange(other.m_line, -1)) {}
    LineClient &operator=(LineClient &&) = delete;
    ~LineClient()
    {
        if (m_line >= 0)
            ::close(m_line);
    }

    bool isOpen() const { return m_line >= 0; }

    /** Whether the other end has closed it. */
    bool isAtEnd() const
    {
        pollfd line = {m_line, POLLIN, 0};
        ::poll(&line, 1, 10000);
        char character = 0;
        return line.revents != 0 && ::read(m_line, &character, 1) <= 0;
    }

    /** Sends a line. @return what comes until the prompt, or for so long */
    QByteArray send(const QByteArray &line, int timeoutMs = 20000)
    {
        const QByteArray all = line + '\r';
        if (::write(m_line, all.constData(), size_t(all.size())) != all.size())
            return {};
        QElapsedTimer time;
        time.start();
        QByteArray answer;
        while (!answer.endsWith('>') && time.elapsed() < timeoutMs) {
            pollfd ready = {m_line, POLLIN, 0};
            char buffer[256];
            if (::poll(&ready, 1, int(qMax<qint64>(1, timeoutMs - time.elapsed()))) <= 0)
                break;
            const ssize_t count = ::read(m_line, buffer, sizeof buffer);
            if (count <= 0)
                break;
            answer.append(buffer, int(count));
        }
        return answer;
    }

private:
    explicit LineClient(int line) : m_line(line) {}

    int m_line;
};
