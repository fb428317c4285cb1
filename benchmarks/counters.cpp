#include "counters.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QTimer>
#include <QWidget>

#include <cerrno>
#include <ctime>

#include <dlfcn.h>

static int decodes = 0;

int pngDecodes()
{
    return decodes;
}

// Found before libpng's own function of this name, which it hands on to.
extern "C" Q_DECL_EXPORT void *png_create_read_struct(const char *version, void *errorPointer,
                                                      void *onError, void *onWarning)
{
    using Create = void *(*)(const char *, void *, void *, void *);
    static const auto create =
        reinterpret_cast<Create>(::dlsym(RTLD_NEXT, "png_create_read_struct"));
    ++decodes;
    return create(version, errorPointer, onError, onWarning);
}

EventCounter::EventCounter()
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool EventCounter::eventFilter(QObject *, QEvent *event)
{
    paints += event->type() == QEvent::Paint;
    timers += event->type() == QEvent::Timer;
    return false;
}

double processorSeconds()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}

void settle(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

void paintNow(QWidget *window)
{
    QEvent request(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(window, &request);
}

static bool sleepsAreSkipped = false;

void skipSleeps(bool skip)
{
    sleepsAreSkipped = skip;
}

// Found before the one of the C library.
extern "C" Q_DECL_EXPORT int nanosleep(const timespec *request, timespec *remaining)
{
    if (sleepsAreSkipped)
        return 0;
    const int error = ::clock_nanosleep(CLOCK_REALTIME, 0, request, remaining);
    if (error != 0)
        errno = error;
    return error == 0 ? 0 : -1;
}
