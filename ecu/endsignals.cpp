#include "endsignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace ecu {

/** As under nohup. */
static bool isIgnored(int signal)
{
    struct sigaction current = {};
    return ::sigaction(signal, nullptr, &current) == 0 && current.sa_handler == SIG_IGN;
}

EndSignals::EndSignals(QObject *parent) : QObject(parent)
{
    std::signal(SIGPIPE, SIG_IGN);
    sigset_t endings = {};
    sigemptyset(&endings);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        if (number != SIGHUP || !isIgnored(SIGHUP))
            sigaddset(&endings, number);
    }
    ::pthread_sigmask(SIG_BLOCK, &endings, nullptr);
    m_descriptor = ::signalfd(-1, &endings, SFD_CLOEXEC | SFD_NONBLOCK);
    if (m_descriptor < 0) {
        ::pthread_sigmask(SIG_UNBLOCK, &endings, nullptr);
        return;
    }
    auto *notifier = new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, endings] {
        signalfd_siginfo received = {};
        [[maybe_unused]] const auto count = ::read(m_descriptor, &received, sizeof received);
        ::pthread_sigmask(SIG_UNBLOCK, &endings, nullptr);
        QCoreApplication::quit();
    });
}

EndSignals::~EndSignals()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

} // namespace ecu
