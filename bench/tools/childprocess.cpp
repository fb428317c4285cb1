#include "tools/childprocess.h"

#include "endsignals.h"

#include <QDeadlineTimer>
#include <QFile>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

[[noreturn]] static void workInChild(const std::function<void(QIODevice *)> &work, int pipe)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL); // whatever ends the bench, ends this too
    endsignals::restore();
    QFile results;
    // Unbuffered: what was written before a crash arrives.
    if (results.open(pipe, QIODevice::WriteOnly | QIODevice::Unbuffered))
        work(&results);
    std::exit(0);
}

ChildProcess ChildProcess::run(const std::function<void(QIODevice *)> &work, int limitMs)
{
    ChildProcess child;
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0)
        return child;
    std::fflush(nullptr); // otherwise the child would print it again
    const pid_t process = ::fork();
    if (process == 0) {
        ::close(ends[0]);
        workInChild(work, ends[1]);
    }
    ::close(ends[1]);
    if (process > 0) {
        const QDeadlineTimer deadline(limitMs);
        child.readResults(ends[0], deadline);
        child.waitForEnd(process, deadline);
    }
    ::close(ends[0]);
    return child;
}

void ChildProcess::readResults(int pipe, const QDeadlineTimer &deadline)
{
    char buffer[4096];
    pollfd ready[] = {{pipe, POLLIN, 0}, {endsignals::descriptor(), POLLIN, 0}};
    while (!endsignals::isRequested()) {
        const int count = ::poll(ready, 2, int(deadline.remainingTime()));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0 || ready[1].revents != 0)
            return;
        const ssize_t size = ::read(pipe, buffer, sizeof buffer);
        if (size <= 0)
            return;
        m_results.append(buffer, int(size));
    }
}

/** A process that has closed its pipe may still go on. */
void ChildProcess::waitForEnd(int process, const QDeadlineTimer &deadline)
{
    static constexpr int pauseUs = 2000;
    int status = 0;
    while (::waitpid(process, &status, WNOHANG) == 0) {
        if (deadline.hasExpired() || endsignals::isRequested()) {
            m_end = endsignals::isRequested() ? Interrupted : TimedOut;
            ::kill(process, SIGKILL);
            ::waitpid(process, &status, 0);
            return;
        }
        ::usleep(pauseUs);
    }
    m_end = WIFSIGNALED(status) ? Crashed : Exited;
    m_signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    m_exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 0;
}

QString ChildProcess::endInWords() const
{
    switch (m_end) {
    case NotStarted:
        return QStringLiteral("not started");
    case TimedOut:
        return QStringLiteral("out of time");
    case Interrupted:
        return QStringLiteral("interrupted");
    case Crashed:
        return QString::fromLatin1(::strsignal(m_signal));
    case Exited:
        break;
    }
    return QStringLiteral("exit code %1").arg(m_exitCode);
}
