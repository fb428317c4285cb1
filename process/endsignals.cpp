#include "endsignals.h"

#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

static constexpr int endings[] = {SIGINT, SIGTERM, SIGHUP};
static volatile std::sig_atomic_t hasRequest = 0;
static int pipeEnds[2] = {-1, -1};

static void onSignal(int number)
{
    if (hasRequest) {
        std::signal(number, SIG_DFL);
        std::raise(number); // delivered on return
        return;
    }
    hasRequest = 1;
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(pipeEnds[1], &byte, 1);
}

namespace endsignals {

void install()
{
    if (pipeEnds[0] < 0 && ::pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    std::signal(SIGPIPE, SIG_IGN);
    for (const int number : endings) {
        if (std::signal(number, onSignal) == SIG_IGN && number == SIGHUP)
            std::signal(number, SIG_IGN);
    }
}

void restore()
{
    for (const int number : endings) {
        if (std::signal(number, SIG_DFL) == SIG_IGN)
            std::signal(number, SIG_IGN);
    }
    std::signal(SIGPIPE, SIG_DFL);
}

bool isRequested()
{
    return hasRequest != 0;
}

int descriptor()
{
    return pipeEnds[0];
}

} // namespace endsignals

EndRequest::EndRequest(QObject *parent) : QObject(parent)
{
    if (endsignals::descriptor() < 0)
        return;
    auto *notifier = new QSocketNotifier(endsignals::descriptor(), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        emit requested();
    });
}

EndRequest::~EndRequest() = default;
