#include "pairs.h"

#include <QElapsedTimer>
#include <QHash>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>

/*
 * The gauges page of the plugin against the same page in Qt Quick with its software renderer. Each
 * side is a program of its own, so that neither loads what the other needs.
 */

using Values = QHash<QString, double>;

/** What a program of `pages/` prints; "clock" is when its first line comes, in seconds. */
static Values run(const char *program, const QStringList &arguments)
{
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
    child.setProcessEnvironment(environment);
    QElapsedTimer timer;
    timer.start();
    child.start(QLatin1String(program), arguments);
    Values values;
    if (child.waitForReadyRead(60'000))
        values.insert(QStringLiteral("clock"), double(timer.nsecsElapsed()) * 1e-9);
    child.waitForFinished(120'000);
    for (const QByteArray &line : child.readAllStandardOutput().split('\n')) {
        const QList<QByteArray> words = line.split(' ');
        values.insert(QString::fromLatin1(words[0]), words.value(1).toDouble());
    }
    if (child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0)
        return values;
    std::fprintf(stderr, "%s: %s\n", program, child.readAllStandardError().constData());
    return {};
}

/** The mean difference of a colour in a part of two pictures, of 255. */
static double difference(const QImage &one, const QImage &other, const QRect &part)
{
    const QImage a = one.copy(part).convertToFormat(QImage::Format_RGB888);
    const QImage b = other.copy(part).convertToFormat(QImage::Format_RGB888);
    qint64 sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < 3 * a.width(); ++x)
            sum += qAbs(int(a.constScanLine(y)[x]) - int(b.constScanLine(y)[x]));
    }
    return double(sum) / (3.0 * a.width() * a.height());
}

/** Of the part that differs most: a text that is missing is little of the whole. */
static double largestDifference(const QImage &one, const QImage &other)
{
    static constexpr double different = 256;
    static constexpr int side = 80; // 1280 and 720 are multiples of it
    if (one.isNull() || one.size() != other.size())
        return different;
    double largest = 0;
    for (int y = 0; y < one.height(); y += side) {
        for (int x = 0; x < one.width(); x += side)
            largest = qMax(largest, difference(one, other, {x, y, side, side}));
    }
    return largest;
}

/** Whether both show the same page; other letters at their edges are no difference. */
static bool areAlike()
{
    static constexpr double mostDifference = 0.5;
    const QTemporaryDir folder;
    const QString widgets = folder.filePath(QStringLiteral("widgets.png"));
    const QString quick = folder.filePath(QStringLiteral("quick.png"));
    run(NORDA_WIDGETS_PAGE, {QStringLiteral("picture"), widgets});
    run(NORDA_QUICK_PAGE, {QStringLiteral("picture"), quick});
    const double found = largestDifference(QImage(widgets), QImage(quick));
    if (found >= mostDifference)
        std::fprintf(stderr,
                     "expected pictures that differ by less than %.1f in each part, got %.1f\n",
                     mostDifference, found);
    return found < mostDifference;
}

struct SideBySide
{
    std::vector<Values> widgets;
    std::vector<Values> quick;
};

/** Both programs in turns, so that both meet the same load; once for all rows of a command. */
static const SideBySide &measured(const QString &command)
{
    static constexpr int rounds = 7;
    static QHash<QString, SideBySide> all;
    SideBySide &sides = all[command];
    while (sides.quick.size() < rounds) {
        sides.widgets.push_back(run(NORDA_WIDGETS_PAGE, {command}));
        sides.quick.push_back(run(NORDA_QUICK_PAGE, {command}));
    }
    return sides;
}

/**
 * @param value   of what the programs print for a command
 * @param factor  from the value to seconds, 0 for what is no time
 */
static void compare(benchmark::State &state, const char *command, const char *value, double factor)
{
    static const bool alike = areAlike();
    const QString name = QLatin1String(value);
    const SideBySide &sides = measured(QLatin1String(command));
    std::vector<double> widgets;
    std::vector<double> quick;
    std::vector<double> ratios;
    for (size_t i = 0; i < sides.quick.size(); ++i) {
        widgets.push_back(sides.widgets[i].value(name));
        quick.push_back(sides.quick[i].value(name));
        ratios.push_back(widgets.back() / quick.back());
    }
    const bool isComplete = std::min(*std::min_element(widgets.begin(), widgets.end()),
                                     *std::min_element(quick.begin(), quick.end())) > 0;
    if (!alike || !isComplete)
        state.SkipWithError(alike ? "a page did not run to its end" : "the pages look different");
    for (auto _ : state)
        state.SetIterationTime(factor * median(widgets));
    state.counters["quick"] = median(quick);
    state.counters["widgets"] = median(widgets);
    state.counters["ratio"] = median(ratios);
}

#define SIDE_BY_SIDE(name, command, value, factor)                                                 \
    BENCHMARK_CAPTURE(compare, name, command, value, factor)                                       \
        ->Name("widgets/" #name)                                                                   \
        ->Unit(benchmark::kMillisecond)                                                            \
        ->UseManualTime()                                                                          \
        ->Iterations(1)

SIDE_BY_SIDE(start, "start", "frame", 1);
SIDE_BY_SIDE(start_clock, "start", "clock", 1);
SIDE_BY_SIDE(memory_rss, "start", "rss", 0);
SIDE_BY_SIDE(memory_pss, "start", "pss", 0);
SIDE_BY_SIDE(memory_own, "start", "own", 0);
SIDE_BY_SIDE(burst, "burst", "seconds", 1);
SIDE_BY_SIDE(step, "step", "seconds", 1);
