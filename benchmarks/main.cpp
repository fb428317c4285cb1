#include <QApplication>
#include <QFont>
#include <QLoggingCategory>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>

bool runStartupChild(int *exitCode);

/** Prints as usual and keeps the times, so that ratios of one run can be told at the end. */
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs)
            m_times[run.run_name.function_name] = run.GetAdjustedRealTime();
    }

    void printRatios() const
    {
        static constexpr struct
        {
            const char *ours, *theirs;
            double limit; // 0 for none
        } ratios[] = {
            {"animation/gauge", "animation/bare", 1.0},
            {"animation/gauge", "animation/qwt", 0.6},
            {"burst/page", "burst/labels", 1.5},
            {"climate/changed", "climate/bare", 1.5},
            {"dbc/frame", "dbc/bare", 2.0},
            {"dbc/values", "dbc/scaled", 2.0},
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
            {"startup/page", "startup/empty_window", 0},
        };
        std::printf("\n");
        for (const auto &ratio : ratios) {
            const auto ours = m_times.find(ratio.ours);
            const auto theirs = m_times.find(ratio.theirs);
            if (ours == m_times.end() || theirs == m_times.end())
                continue;
            std::printf("%-18s / %-22s %5.2f", ratio.ours, ratio.theirs,
                        ours->second / theirs->second);
            if (ratio.limit > 0)
                std::printf("   (at most %.2f)", ratio.limit);
            std::printf("\n");
        }
    }

private:
    std::map<std::string, double> m_times;
};

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("Arial")));
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    int exitCode = 0;
    if (runStartupChild(&exitCode))
        return exitCode;

    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    return 0;
}
