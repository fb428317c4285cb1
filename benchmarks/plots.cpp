// A frame of the plots while they are moved: a curve of a million samples on view, and of a
// thousand.

#include "panels/timerange.h"
#include "plots/curvelist.h"
#include "plots/plotarea.h"
#include "session/session.h"

#include <QPixmap>
#include <QStandardPaths>

#include <benchmark/benchmark.h>

static void frame(benchmark::State &state, int samples)
{
    static constexpr qint64 wholeMs = 10 * 1000 * 1000;
    QStandardPaths::setTestModeEnabled(true); // what somebody's own bench remembers stays out
    QString error;
    Session session(module::openSource(QStringLiteral("none"), &error));
    Journal *journal = session.journal();
    journal->setLimit(samples);
    for (int i = 0; i < samples; ++i)
        journal->noteSignal(wholeMs / samples * i, "doorStatus", {uchar(i * 37)});
    CurveList curves;
    curves.clear();
    curves.add({QStringLiteral("doorStatus.bits")});
    curves.catchUp(&session);
    TimeRange range;
    range.set(0, wholeMs);
    PlotArea area(&curves, &range);
    area.setSession(&session);
    area.resize(1600, 200);
    area.show();
    QPixmap picture(area.size());
    int number = 0;
    for (auto _ : state) {
        range.set(number++ % 100 * 1000, wholeMs);
        area.refresh();
        area.render(&picture);
    }
}

BENCHMARK_CAPTURE(frame, thousand, 1000)->Name("plots/thousand")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(frame, million, 1000 * 1000)
    ->Name("plots/million")
    ->Unit(benchmark::kMillisecond);
