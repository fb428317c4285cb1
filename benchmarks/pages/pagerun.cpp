#include "pagerun.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QFile>
#include <QPixmap>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <cstdio>
#include <ctime>

static constexpr int settlingMs = 500; // longer than a needle's animation

GaugesPage::~GaugesPage() = default;

/** Of all threads. */
static double processorSeconds()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}

static void print(const char *name, double value)
{
    std::printf("%s %.9g\n", name, value);
    std::fflush(stdout);
}

static void settle(int ms = settlingMs)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

static void paintNow(const GaugesPage *page)
{
    QEvent request(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(page->painter(), &request);
}

/** Counts the events of a type that an object receives. */
class EventCount : public QObject
{
public:
    EventCount(QObject *watched, QEvent::Type type) : m_type(type)
    {
        watched->installEventFilter(this);
    }
    int count = 0;

private:
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == m_type;
        return false;
    }

    const QEvent::Type m_type;
};

/** In kB, by their names in the kernel's summary. */
static void printMemory()
{
    QFile file(QStringLiteral("/proc/self/smaps_rollup"));
    if (!file.open(QIODevice::ReadOnly))
        return;
    double own = 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const double kilobytes = line.simplified().split(' ').value(1).toDouble();
        if (line.startsWith("Rss:"))
            print("rss", kilobytes);
        else if (line.startsWith("Pss:"))
            print("pss", kilobytes);
        else if (line.startsWith("Private_"))
            own += kilobytes;
    }
    print("own", own);
}

/** The first frame is painted while a window is exposed. */
static void start(GaugesPage *page)
{
    page->show();
    const EventCount exposed(page->window(), QEvent::Expose);
    while (exposed.count == 0)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    print("frame", processorSeconds());
    settle();
    printMemory();
}

static void burst(GaugesPage *page)
{
    static constexpr int turns = 200;
    page->show();
    settle();
    for (int turn = 0; turn < 2; ++turn)
        page->burst(turn);
    settle();
    const double before = processorSeconds();
    for (int turn = 0; turn < turns; ++turn) {
        page->burst(turn);
        paintNow(page);
    }
    print("seconds", (processorSeconds() - before) / turns);
}

/** The needle goes from end to end, in as many frames as the toolkit makes of it. */
static void step(GaugesPage *page)
{
    static constexpr int sweeps = 12;
    static constexpr int sweepMs = 250;
    page->show();
    settle();
    page->setNeedle(100);
    settle();
    const EventCount frames(page->painter(), QEvent::UpdateRequest);
    const double before = processorSeconds();
    for (int sweep = 0; sweep < sweeps; ++sweep) {
        page->setNeedle(sweep % 2 ? 100 : 0);
        settle(sweepMs);
    }
    print("seconds", (processorSeconds() - before) / qMax(1, frames.count));
    print("frames", frames.count);
}

static bool savePicture(GaugesPage *page, const QString &file)
{
    page->show();
    settle();
    page->burst(1234);
    settle();
    return page->window()->screen()->grabWindow(page->window()->winId()).save(file);
}

int runPage(GaugesPage *page, const QStringList &arguments)
{
    const QString what = arguments.value(1);
    if (what == QLatin1String("start"))
        start(page);
    else if (what == QLatin1String("burst"))
        burst(page);
    else if (what == QLatin1String("step"))
        step(page);
    else if (what != QLatin1String("picture") || !savePicture(page, arguments.value(2)))
        return 2;
    return 0;
}
