#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>

#include <algorithm>
#include <cstddef>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

/** What a service manager listens on for its programs' reports. */
class NotifySocket
{
public:
    /** @param name  a path, or with "@" a name in no file system */
    explicit NotifySocket(const QByteArray &name)
        : m_name(name), m_socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        std::copy_n(name.begin(), name.size(), address.sun_path);
        if (name.startsWith('@'))
            address.sun_path[0] = '\0';
        m_isBound = ::bind(m_socket, reinterpret_cast<const sockaddr *>(&address),
                           socklen_t(offsetof(sockaddr_un, sun_path) + size_t(name.size()))) == 0;
    }
    NotifySocket(const NotifySocket &) = delete;
    NotifySocket &operator=(const NotifySocket &) = delete;
    ~NotifySocket() { ::close(m_socket); }

    bool isBound() const { return m_isBound; }
    QByteArray name() const { return m_name; }

    /** The next report, an empty one after a time without any. */
    QByteArray next(int timeoutMs) const
    {
        pollfd ready = {m_socket, POLLIN, 0};
        char buffer[4096];
        if (::poll(&ready, 1, timeoutMs) != 1)
            return {};
        const ssize_t count = ::recv(m_socket, buffer, sizeof buffer, 0);
        return QByteArray(buffer, int(std::max<ssize_t>(0, count)));
    }
    /** All reports up to one that begins like this, which is the last. */
    QList<QByteArray> upTo(const QByteArray &begin, int timeoutMs = 60000) const
    {
        QList<QByteArray> reports;
        QElapsedTimer time;
        for (time.start(); time.elapsed() < timeoutMs;) {
            const QByteArray report = next(1000);
            if (!report.isEmpty())
                reports.append(report);
            if (report.startsWith(begin))
                break;
        }
        return reports;
    }
    /** All reports within a time. */
    QList<QByteArray> during(int ms) const
    {
        QList<QByteArray> reports;
        QElapsedTimer time;
        for (time.start(); time.elapsed() < ms;) {
            const QByteArray report = next(int(std::max<qint64>(1, ms - time.elapsed())));
            if (!report.isEmpty())
                reports.append(report);
        }
        return reports;
    }
    /** Whether there is a time of silence within a minute. */
    bool fallsSilent(int ms) const
    {
        QElapsedTimer time;
        for (time.start(); time.elapsed() < 60000;) {
            if (next(ms).isEmpty())
                return true;
        }
        return false;
    }

private:
    QByteArray m_name;
    int m_socket;
    bool m_isBound = false;
};
