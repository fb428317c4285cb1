#include "program/servicemanager.h"

#include <algorithm>
#include <cstddef>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

static constexpr size_t longestAddress = sizeof sockaddr_un::sun_path;

/** A path, or with "@" a name that is in no file system. Empty where there is none to use. */
static QByteArray managerAddress()
{
    QByteArray address = qgetenv("NOTIFY_SOCKET");
    const bool isUsable = size_t(address.size()) < longestAddress &&
                          (address.startsWith('/') || address.startsWith('@'));
    if (isUsable || address.isEmpty())
        return address;
    qWarning("NOTIFY_SOCKET: expected a path or a name with '@', got '%s'", address.constData());
    return {};
}

/** Half the time that may pass between two signs of life; 0 where none are expected. */
static int watchdogMs()
{
    const QByteArray process = qgetenv("WATCHDOG_PID");
    const QByteArray allowed = qgetenv("WATCHDOG_USEC");
    if (allowed.isEmpty() || (!process.isEmpty() && process.toLongLong() != ::getpid()))
        return 0;
    static constexpr qint64 longest = 24LL * 3600 * 1000 * 1000;
    bool isNumber = false;
    const qint64 microseconds = allowed.toLongLong(&isNumber);
    if (isNumber && microseconds >= 1)
        return std::max(1, int(std::min(microseconds, longest) / 2000));
    qWarning("WATCHDOG_USEC: expected a number of microseconds, got '%s'", allowed.constData());
    return 0;
}

ServiceManager::ServiceManager(QObject *parent)
    : QObject(parent)
    , m_address(managerAddress())
    , m_watchdogMs(m_address.isEmpty() ? 0 : watchdogMs())
{
}

ServiceManager::~ServiceManager() = default;

void ServiceManager::reportReady()
{
    send("READY=1\n" + m_status);
    if (m_watchdogMs > 0)
        m_watchdog.start(m_watchdogMs, this);
}

void ServiceManager::reportStopping()
{
    send("STOPPING=1");
}

void ServiceManager::setStatus(const QString &text)
{
    const QByteArray status = "STATUS=" + text.simplified().toUtf8();
    if (status == m_status)
        return;
    m_status = status;
    send(m_status);
}

void ServiceManager::timerEvent(QTimerEvent *)
{
    send("WATCHDOG=1");
}

/** The manager need not listen: what it misses is its own affair, and nothing waits for it. */
void ServiceManager::send(const QByteArray &message) const
{
    if (m_address.isEmpty())
        return;
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::copy(m_address.begin(), m_address.end(), address.sun_path);
    if (address.sun_path[0] == '@')
        address.sun_path[0] = '\0';
    const auto length = socklen_t(offsetof(sockaddr_un, sun_path) + size_t(m_address.size()));
    const int descriptor = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ::sendto(descriptor, message.constData(), size_t(message.size()), MSG_NOSIGNAL | MSG_DONTWAIT,
             reinterpret_cast<const sockaddr *>(&address), length);
    ::close(descriptor);
}
