// What the bench's panels cost: the processor's time for each delivered signal of a drive, with the
// head unit and the transport strip alone, with the panels closed and with all of them open; and
// the timeline's picture.

#include "counters.h"
#include "options.h"
#include "panels/timelineview.h"
#include "session/rig.h"
#include "window/benchwindow.h"
#include "window/transportbar.h"

#include <QApplication>
#include <QDockWidget>
#include <QEventLoop>
#include <QStandardPaths>
#include <QTimer>
#include <QVBoxLayout>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <vector>

enum class Panels { None, Closed, Open };

/** Lets the event loop run, as it does at a desk. */
static void run(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

/** Processor time for each signal of the simulated car in town, ten times as fast as it is. */
static double secondsPerSignal(Panels panels)
{
    static constexpr qint64 townMs = 30000;
    static constexpr int warmUpMs = 300;
    static constexpr int measuredMs = 1000;
    Options options;
    options.setup.speed = 10;
    options.setup.journalLimit = panels == Panels::None ? 0 : Journal::usualLimit;
    Rig rig(options.setup);
    QString error;
    if (!rig.open(QStringLiteral(NORDA_PLUGIN_FILE), &error))
        qFatal("%s", qPrintable(error));
    Session *measured = rig.session();
    std::unique_ptr<BenchWindow> window;
    QWidget desk;
    if (panels == Panels::None) {
        auto *transport = new TransportBar;
        auto *column = new QVBoxLayout(&desk);
        column->addWidget(rig.unit()->screen());
        column->addWidget(transport);
        transport->setDrive(measured->drive());
        desk.show();
        rig.begin(Replay::Beginning);
        measured->drive()->play();
    } else {
        window = std::make_unique<BenchWindow>(options, &rig);
        for (QDockWidget *dock : window->findChildren<QDockWidget *>())
            dock->setVisible(panels == Panels::Open);
        // Each in a window of its own: behind a tab a panel rests.
        for (QDockWidget *dock : window->findChildren<QDockWidget *>())
            dock->setFloating(panels == Panels::Open);
        window->show();
        window->start();
    }
    const auto docks = window ? window->findChildren<QDockWidget *>() : QList<QDockWidget *>();
    for (const QDockWidget *dock : docks) {
        if (dock->isVisible() != (panels == Panels::Open))
            qFatal("%s is not as it should be", qPrintable(dock->objectName()));
    }
    measured->drive()->seek(townMs);
    run(warmUpMs);
    const int signalsBefore = measured->signalCount();
    const double before = processorSeconds();
    run(measuredMs);
    const double seconds = processorSeconds() - before;
    rig.unit()->screen()->setParent(nullptr); // it is not the desk's to delete
    return seconds / (measured->signalCount() - signalsBefore);
}

static double median(std::vector<double> values)
{
    std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
    return values[values.size() / 2];
}

/**
 * In turns, each against the bench without panels a moment before: how fast the machine is at the
 * time strikes both alike. The median leaves out what else it does.
 */
static std::map<Panels, double> measureInTurns()
{
    static constexpr int rounds = 15;
    std::vector<double> none, closed, open;
    for (int round = 0; round < rounds; ++round) {
        none.push_back(secondsPerSignal(Panels::None));
        closed.push_back(secondsPerSignal(Panels::Closed) / none.back());
        open.push_back(secondsPerSignal(Panels::Open) / none.back());
    }
    const double alone = median(none);
    return {{Panels::None, alone},
            {Panels::Closed, alone * median(closed)},
            {Panels::Open, alone * median(open)}};
}

static void perSignal(benchmark::State &state, Panels panels)
{
    QStandardPaths::setTestModeEnabled(true); // what somebody's own bench remembers stays out
    static const std::map<Panels, double> seconds = measureInTurns();
    for (auto _ : state)
        state.SetIterationTime(seconds.at(panels));
}

BENCHMARK_CAPTURE(perSignal, none, Panels::None)
    ->Name("panels/none")
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(perSignal, closed, Panels::Closed)
    ->Name("panels/closed")
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(perSignal, open, Panels::Open)
    ->Name("panels/open")
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMicrosecond);

/** The line is scrolled from its start to its end at a zoom that shows a tenth of it. */
static void scroll(benchmark::State &state, int events)
{
    QString error;
    Session session(module::openSource(QStringLiteral("none"), &error));
    Journal *journal = session.journal();
    journal->setLimit(events);
    for (int i = 0; i < events; ++i)
        journal->note(i * 10, Journal::Kind(i % Journal::KindCount), QStringLiteral("an event"),
                      {i});
    TimeRange range;
    TimelineView view(&range);
    view.setSession(&session);
    view.resize(1600, 160);
    const qint64 wholeMs = qint64(events) * 10;
    QPixmap picture(view.size());
    int frame = 0;
    for (auto _ : state) {
        view.setRange(wholeMs * (frame++ % 100) / 110, wholeMs / 10);
        view.render(&picture);
    }
}

BENCHMARK_CAPTURE(scroll, thousand, 1000)->Name("timeline/thousand")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(scroll, million, 1000 * 1000)
    ->Name("timeline/million")
    ->Unit(benchmark::kMillisecond);
