// Hours of use in minutes: the simulated car drives at unlimited speed, a random finger touches,
// pages come and go, windows are destroyed and built anew, the library is unloaded and loaded. What
// is in use at the end must be what was in use once everything had been shown.
//
//   norda-soak HOURS [SEED]      hours of drive time
//   norda-soak --cycles COUNT    loads, uses and unloads the library

#include "headunit.h"
#include "norda/vtqadaptor.h"
#include "session/session.h"
#include "testpaths.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLoggingCategory>
#include <QMouseEvent>
#include <QPixmapCache>
#include <QTemporaryDir>
#include <QtMath>

#include <atomic>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <malloc.h>
#include <random>
#include <unistd.h>

// The pauses of the menu page would be all that there is.
extern "C" __attribute__((visibility("default"))) int nanosleep(const timespec *, timespec *)
{
    return 0;
}

// Qt tells its debuggers here of each object that comes and goes.
extern "C" Q_CORE_EXPORT quintptr qtHookData[];
static constexpr int addHook = 3;
static constexpr int removeHook = 4;
static std::atomic<long> liveObjects{0};

static void countObjects()
{
    qtHookData[addHook] = quintptr(+[](QObject *) { ++liveObjects; });
    qtHookData[removeHook] = quintptr(+[](QObject *) { --liveObjects; });
}

struct InUse
{
    size_t heapBytes;
    long residentBytes;
    long objects;
};

static InUse inUse()
{
    ::malloc_trim(0);
    long pages = 0;
    QFile memory(QStringLiteral("/proc/self/statm"));
    if (memory.open(QIODevice::ReadOnly))
        pages = memory.readAll().split(' ').value(1).toLong();
    return {::mallinfo2().uordblks, pages * ::sysconf(_SC_PAGESIZE), liveObjects};
}

static void print(const QString &when, const InUse &use)
{
    std::printf("%-14s heap %8.3f MB   resident %7.2f MB   objects %ld\n", qPrintable(when),
                double(use.heapBytes) / 1e6, double(use.residentBytes) / 1e6, use.objects);
    std::fflush(stdout);
}

/** A head unit that lives for one loading of the library. */
class Unit
{
public:
    Unit()
    {
        QString error;
        if (!m_unit.load(testpaths::pluginFile(), &error))
            qFatal("%s", qPrintable(error));
        m_unit.screen()->show();
        m_unit.windows()->openWindow(firstWindow);
    }

    void act(std::mt19937 *random)
    {
        switch ((*random)() % 24) {
        case 0:
            m_unit.windows()->recreateWindow();
            break;
        case 1:
            m_unit.windows()->back();
            break;
        case 2:
            m_unit.windows()->toggleSplit();
            break;
        case 3:
        case 4:
            m_unit.windows()->openWindow(firstWindow + int((*random)() % windowCount));
            break;
        default:
            touch(random);
        }
    }

private:
    static constexpr int firstWindow = 80;
    static constexpr int windowCount = 6;

    void touch(std::mt19937 *random)
    {
        QWidget *page = m_unit.windows()->currentPage();
        const QPoint place(int((*random)() % 1152) + 128, int((*random)() % 720));
        QWidget *touched = page ? page->childAt(place) : nullptr;
        if (!touched)
            return;
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, touched->mapFrom(page, place), page->mapToGlobal(place),
                              Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(touched, &event);
        }
    }

    HeadUnit m_unit;
};

/** A trip of the car, or its beginning, with a touch for every two seconds of it. */
static void drive(std::mt19937 *random, qint64 limitMs)
{
    static constexpr qint64 touchEveryMs = 2000;
    Unit unit;
    QString error;
    Session session(module::openSource(QStringLiteral("simulator"), &error));
    module::Drive *drive = session.drive();
    drive->setSpeed(module::Drive::Unlimited);
    drive->setLimit(limitMs);
    qint64 nextTouch = 0;
    QObject::connect(drive, &module::Drive::positionChanged, drive, [&](qint64 ms) {
        for (; nextTouch <= ms; nextTouch += touchEveryMs)
            unit.act(random);
    });
    QEventLoop loop;
    QObject::connect(drive, &module::Drive::finished, &loop, &QEventLoop::quit);
    drive->play();
    loop.exec();
    QCoreApplication::processEvents();
}

static bool hasGrown(const char *what, double before, double after)
{
    static constexpr double most = 1.01;
    if (after <= before * most)
        return false;
    std::fprintf(stderr, "%s: grown by %.2f %%, expected less than 1 %%\n", what,
                 100 * (after / before - 1));
    return true;
}

static bool hasGrown(const InUse &before, const InUse &after)
{
    bool grown = hasGrown("heap", double(before.heapBytes), double(after.heapBytes));
    grown |= hasGrown("resident memory", double(before.residentBytes), double(after.residentBytes));
    return grown;
}

static bool areLeft(long before, long after)
{
    if (after != before)
        std::fprintf(stderr, "%ld objects are alive: expected %ld\n", after, before);
    return after != before;
}

static int soak(double hours, unsigned seed)
{
    static constexpr qint64 minuteMs = 60000;
    static constexpr qint64 tripMs = 600000;
    static constexpr int tripsPerHour = 6;
    // Glyphs and fonts that no page has shown yet are still being cached until then.
    static constexpr int warmUpHours = 4;
    // Qt never deletes the gesture recognizer of a page that scrolled, and pages are built anew.
    static constexpr int qtKeepsPerHour = 1000;
    std::mt19937 random(seed);
    QElapsedTimer clock;
    clock.start();
    print(QStringLiteral("start"), inUse());
    drive(&random, minuteMs);
    const InUse first = inUse();
    print(QStringLiteral("after a minute"), first);

    const int trips = qCeil(qMax(hours, warmUpHours + 1.0) * tripsPerHour);
    InUse settled = {};
    InUse end = {};
    for (int trip = 1; trip <= trips; ++trip) {
        drive(&random, tripMs);
        end = inUse();
        if (trip == warmUpHours * tripsPerHour)
            settled = end;
        if (trip % (4 * tripsPerHour) == 0 || trip == trips)
            print(QStringLiteral("%1 h").arg(double(trip) / tripsPerHour), end);
    }
    std::printf("%d trips in %.0f s\n", trips, double(clock.elapsed()) / 1000);
    settled.heapBytes += size_t(qtKeepsPerHour * (trips / tripsPerHour - warmUpHours));
    const bool grown = hasGrown(settled, end);
    return areLeft(settled.objects, end.objects) || grown;
}

static void loadOnce(std::mt19937 *random)
{
    Unit unit;
    for (int i = 0; i < 3; ++i)
        unit.act(random);
    emit norda::VtqAdaptor::instance()->batteryVoltage(QStringLiteral("12.6V"));
    QCoreApplication::processEvents();
}

/** The least that is in use after some of them: what Qt caches depends on the last pages. */
static InUse loadOften(int count, std::mt19937 *random)
{
    static constexpr int compared = 50;
    for (int i = compared; i < count; ++i)
        loadOnce(random);
    InUse least = {SIZE_MAX, LONG_MAX, LONG_MAX};
    for (int i = 0; i < compared; ++i) {
        loadOnce(random);
        const InUse now = inUse();
        least = {qMin(least.heapBytes, now.heapBytes), qMin(least.residentBytes, now.residentBytes),
                 qMin(least.objects, now.objects)};
    }
    return least;
}

static int loadAndUnload(int count)
{
    static constexpr int warmUp = 500; // until then some page or font is shown for the first time
    std::mt19937 random(1);
    print(QStringLiteral("start"), inUse());
    const InUse settled = loadOften(warmUp, &random);
    print(QStringLiteral("%1 cycles").arg(warmUp), settled);
    const InUse end = loadOften(count - warmUp, &random);
    print(QStringLiteral("%1 cycles").arg(count), end);
    const bool grown = hasGrown(settled, end);
    return areLeft(settled.objects, end.objects) || grown;
}

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir root;
    qputenv("NORDA_HOST_ROOT", root.path().toLocal8Bit());
    countObjects();
    QApplication application(argc, argv);
    // Qt forgets the keys of its pixmap cache as real time passes, and here hours pass in seconds.
    QPixmapCache::setCacheLimit(0);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    const QStringList arguments = QApplication::arguments();
    if (arguments.value(1) == QLatin1String("--cycles") && arguments.value(2).toInt() > 0)
        return loadAndUnload(arguments[2].toInt());
    const double hours = arguments.value(1).toDouble();
    if (hours > 0)
        return soak(hours, arguments.value(2, QStringLiteral("20140907")).toUInt());
    std::fprintf(stderr, "usage: norda-soak HOURS [SEED] | --cycles COUNT\n");
    return 2;
}
