#include "counters.h"
#include "pairs.h"

#include "appplugin.h"
#include "windowinterface.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QFile>
#include <QLabel>
#include <QPluginLoader>
#include <QProcess>
#include <QWidget>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <sys/resource.h>
#include <vector>

/*
 * From the start of a process to its first painted frame, with the memory it holds then: the gauges
 * page through the plugin loader, against an empty window of the same background, and against one
 * with a text in each of the page's first fonts, since a first text takes as much as the rest of
 * the page. Each is a process of its own: this program, called with the variable below.
 */

static constexpr char variable[] = "NORDA_STARTUP";

/** Ends the process with the first frame, and says what it took. */
class FirstFrame : public QObject
{
public:
    explicit FirstFrame(QWidget *window) { window->installEventFilter(this); }

private:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::UpdateRequest)
            QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
        return false;
    }
};

/** Those that the gauges page draws its first frame with. */
static void addTexts(QWidget *window)
{
    static constexpr struct
    {
        int points;
        bool bold;
    } fonts[] = {{30, false}, {16, false}, {18, false}, {19, true}};
    int y = 100;
    for (const auto &font : fonts) {
        auto *label = new QLabel(QStringLiteral("Gauges 0123456789"), window);
        label->setFont(
            QFont(QStringLiteral("Arial"), font.points, font.bold ? QFont::Bold : QFont::Normal));
        label->setGeometry(200, y, 600, 60);
        y += 60;
    }
}

static long residentKilobytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.simplified().split(' ').value(1).toLong();
    }
    return 0;
}

bool runStartupChild(int *exitCode)
{
    const QByteArray what = qgetenv(variable);
    if (what.isEmpty())
        return false;
    QWidget *window = nullptr;
    QWidget empty;
    QPluginLoader loader(QStringLiteral(NORDA_PLUGIN_FILE));
    if (what == "page") {
        auto *plugin = qobject_cast<AppPlugin *>(loader.instance());
        plugin->create();
        WindowInterface *gauges = plugin->requestWindowInterface(80);
        gauges->onCreate();
        window = gauges->mainWidget();
    } else {
        window = &empty;
        QPalette colors = window->palette();
        colors.setColor(QPalette::Window, QColor(0x0D, 0x13, 0x1A));
        window->setPalette(colors);
        window->setAutoFillBackground(true);
        window->resize(1280, 720);
        if (what == "texts")
            addTexts(window);
    }
    FirstFrame frame(window);
    window->show();
    window->update();
    QApplication::exec();
    std::printf("%ld\n", residentKilobytes());
    std::fflush(stdout);
    *exitCode = 0;
    return true;
}

/** What a start takes: the processor's seconds, and kilobytes; neither where it has failed. */
struct Start
{
    double seconds = 0;
    double kilobytes = 0;
};

/** What the processor has spent on programs that have ended. */
static double childSeconds()
{
    rusage usage = {};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto seconds = [](const timeval &time) {
        return double(time.tv_sec) + double(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

static Start start(const QString &what)
{
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(variable), what);
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("default.debug=false"));
    child.setProcessEnvironment(environment);
    const double before = childSeconds();
    child.start(QCoreApplication::applicationFilePath(), QStringList());
    child.waitForFinished();
    if (child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0)
        return {};
    return {childSeconds() - before, child.readAllStandardOutput().simplified().toDouble()};
}

/** All kinds in turns, so that they meet the same load. */
static std::map<QString, std::vector<Start>> startInTurns()
{
    static constexpr int rounds = 15;
    std::map<QString, std::vector<Start>> all;
    for (int round = 0; round < rounds; ++round) {
        for (const char *what : {"page", "texts", "empty"})
            all[QLatin1String(what)].push_back(start(QLatin1String(what)));
    }
    return all;
}

/** The least time, as other programs only add to it, and the median of the memory. */
static void startup(benchmark::State &state, const char *what)
{
    static const std::map<QString, std::vector<Start>> starts = startInTurns();
    std::vector<double> seconds;
    std::vector<double> kilobytes;
    for (const Start &each : starts.at(QLatin1String(what))) {
        seconds.push_back(each.seconds);
        kilobytes.push_back(each.kilobytes);
    }
    const double least = *std::min_element(seconds.begin(), seconds.end());
    if (least <= 0)
        state.SkipWithError("a start has failed");
    for (auto _ : state)
        state.SetIterationTime(least);
    state.counters["kB"] = median(kilobytes);
}

#define STARTUP(what, name)                                                                        \
    BENCHMARK_CAPTURE(startup, what, #what)                                                        \
        ->Name("startup/" name)                                                                    \
        ->Unit(benchmark::kMillisecond)                                                            \
        ->UseManualTime()                                                                          \
        ->Iterations(1)

STARTUP(page, "page");
STARTUP(texts, "texts");
STARTUP(empty, "empty_window");
