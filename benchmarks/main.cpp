#include "bussender.h"

#include <QApplication>
#include <QFont>
#include <QLoggingCategory>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <optional>
#include <string>

bool runStartupChild(int *exitCode);

/** Prints as usual and keeps the times, so that ratios of one run can be told at the end. */
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs) {
            const std::string &name = run.run_name.function_name;
            m_hasFailed |= run.error_occurred;
            m_times[name] = run.GetAdjustedRealTime();
            const auto ratio = run.counters.find("ratio");
            if (ratio != run.counters.end())
                m_pairs[name] = ratio->second;
        }
    }

    void printRatios()
    {
        static constexpr struct
        {
            const char *ours, *theirs;
            double limit; // 0 for none
        } ratios[] = {
            {"animation/gauge", "animation/bare", 1.0},
            {"animation/gauge", "animation/qwt", 0.6},
            {"burst/page", "burst/labels", 1.5},
            {"bus/signal", "bus/in_process", 0},
            {"climate/changed", "climate/bare", 1.5},
            {"dbc/frame", "dbc/bare", 2.0},
            {"dbc/values", "dbc/scaled", 2.0},
            {"livebus/about", "livebus/bare", 2.0},
            {"livebus/gauges", "livebus/bare", 2.5},
            {"livebus/needle", "livebus/bare_needle", 1.5},
            {"menu/page", "menu/bare", 1.5},
            {"panels/closed", "panels/none", 1.05},
            {"panels/open", "panels/none", 1.25},
            {"plots/million", "plots/thousand", 10},
            {"timeline/million", "timeline/thousand", 0},
            {"parking/one_zone", "parking/bare", 1.0},
            {"parking/sixty_hidden", "parking/sixty_visible", 0},
            {"scale/one", "scale/direct", 1.2},
            {"scale/three_quarters", "scale/direct", 0},
            {"scale/two", "scale/direct", 0},
            {"startup/page", "startup/empty_window", 1.9},
            {"startup/page", "startup/texts", 1.7},
            {"widgets/burst", "quick/burst", 0},
            {"widgets/memory_own", "quick/memory_own", 0},
            {"widgets/memory_pss", "quick/memory_pss", 0},
            {"widgets/memory_rss", "quick/memory_rss", 0},
            {"widgets/start", "quick/start", 0},
            {"widgets/start_clock", "quick/start_clock", 0},
            {"widgets/step", "quick/step", 0},
        };
        std::printf("\n");
        for (const auto &ratio : ratios) {
            const auto measured = ratioOf(ratio.ours, ratio.theirs);
            if (!measured)
                continue;
            std::printf("%-20s / %-20s %5.2f", ratio.ours, ratio.theirs, *measured);
            if (ratio.limit > 0)
                std::printf("   (at most %.2f)", ratio.limit);
            const bool isAbove = ratio.limit > 0 && *measured > ratio.limit;
            std::printf(isAbove ? "   exceeded\n" : "\n");
            m_hasFailed |= isAbove;
        }
    }

    /** Whether a benchmark has failed or a limit is exceeded. */
    bool hasFailed() const { return m_hasFailed; }

private:
    /** Of a pair by its rounds, otherwise by the times of both. */
    std::optional<double> ratioOf(const char *ours, const char *theirs) const
    {
        const auto pair = m_pairs.find(ours);
        if (pair != m_pairs.end())
            return pair->second;
        const auto own = m_times.find(ours);
        const auto other = m_times.find(theirs);
        if (own == m_times.end() || other == m_times.end())
            return std::nullopt;
        return own->second / other->second;
    }

    std::map<std::string, double> m_times;
    std::map<std::string, double> m_pairs; // ratios that were measured as such
    bool m_hasFailed = false;
};

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("Arial")));
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false\nqt.canbus.*=false"));
    int exitCode = 0;
    if (runStartupChild(&exitCode) || runBusSender(&exitCode))
        return exitCode;

    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    return reporter.hasFailed() ? 1 : 0;
}
