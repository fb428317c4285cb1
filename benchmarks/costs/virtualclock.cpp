#include "virtualclock.h"

#include <QEventLoop>
#include <QTimer>

#include <ctime>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

static constexpr long long nsPerSecond = 1000000000;
static constexpr long long startNs = 1790000000 * nsPerSecond;

static long long nowNs = startNs;

static long long nanoseconds(const timespec &time)
{
    return time.tv_sec * nsPerSecond + time.tv_nsec;
}

void passTime(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

// Found before those of the C library, by every library of the process.
#pragma GCC visibility push(default)
extern "C" {

int clock_gettime(clockid_t, timespec *time)
{
    *time = {time_t(nowNs / nsPerSecond), long(nowNs % nsPerSecond)};
    return 0;
}

int gettimeofday(timeval *time, void *)
{
    *time = {time_t(nowNs / nsPerSecond), suseconds_t(nowNs % nsPerSecond / 1000)};
    return 0;
}

time_t time(time_t *result)
{
    const auto seconds = time_t(nowNs / nsPerSecond);
    if (result)
        *result = seconds;
    return seconds;
}

int nanosleep(const timespec *request, timespec *)
{
    nowNs += nanoseconds(*request);
    return 0;
}

/** Returns what is ready at once. A wait for nothing else than the time is skipped. */
int ppoll(pollfd *files, nfds_t count, const timespec *timeout, const sigset_t *)
{
    timespec wait = {0, 0};
    const auto poll = [&](timespec *most) {
        return int(::syscall(SYS_ppoll, files, count, most, nullptr, 0));
    };
    const int ready = poll(timeout ? &wait : nullptr);
    if (ready == 0 && timeout)
        nowNs += nanoseconds(*timeout);
    return ready;
}
}
#pragma GCC visibility pop
