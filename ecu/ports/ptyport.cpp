#include "ports/ptyport.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace ecu {

PtyPort::PtyPort(const QString &link, QObject *parent) : LinePort(parent), m_link(link) {}

PtyPort::~PtyPort()
{
    close();
}

bool PtyPort::open(QString *error)
{
    if (!openTerminal()) {
        *error = QStringLiteral("--pty: no pseudo terminal can be opened: %1")
                     .arg(QString::fromLocal8Bit(std::strerror(errno)));
        close();
        return false;
    }
    if (!makeLink(error)) {
        close();
        return false;
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_own, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &PtyPort::read);
    return true;
}

/** Characters pass as they are, both ways. */
bool PtyPort::openTerminal()
{
    m_own = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    if (m_own < 0 || ::grantpt(m_own) != 0 || ::unlockpt(m_own) != 0)
        return false;
    char name[64] = {};
    if (::ptsname_r(m_own, name, sizeof name) != 0)
        return false;
    m_terminal = QString::fromLocal8Bit(name);
    m_client = ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings = {};
    if (m_client < 0 || ::tcgetattr(m_client, &settings) != 0)
        return false;
    ::cfmakeraw(&settings);
    return ::tcsetattr(m_client, TCSANOW, &settings) == 0;
}

/** One that an earlier run has left is replaced. */
bool PtyPort::makeLink(QString *error)
{
    if (m_link.isEmpty())
        return true;
    if (QFileInfo(m_link).isSymLink())
        QFile::remove(m_link);
    if (QFile::link(m_terminal, m_link))
        return true;
    *error =
        QStringLiteral("--pty: expected a name for a link that can be made, got '%1'").arg(m_link);
    return false;
}

void PtyPort::close()
{
    m_notifier.reset();
    if (!m_link.isEmpty() && QFileInfo(m_link).symLinkTarget() == m_terminal)
        QFile::remove(m_link);
    for (int *end : {&m_own, &m_client}) {
        if (*end >= 0)
            ::close(*end);
        *end = -1;
    }
    m_terminal.clear();
}

void PtyPort::read()
{
    char buffer[1024];
    const ssize_t count = ::read(m_own, buffer, sizeof buffer);
    if (count > 0)
        emit received(QByteArray(buffer, int(count)));
}

/** What a client does not read is lost, as on a serial line. */
void PtyPort::write(const QByteArray &characters)
{
    if (m_own >= 0) [[maybe_unused]]
        const auto written = ::write(m_own, characters.constData(), size_t(characters.size()));
}

} // namespace ecu
