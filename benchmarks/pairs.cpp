#include "pairs.h"

#include <algorithm>

double median(std::vector<double> values)
{
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void measureInTurns(benchmark::State &state, int rounds, const Round &ours, const Round &theirs)
{
    std::vector<double> times;
    std::vector<double> ratios;
    for (int i = 0; i < rounds; ++i) {
        times.push_back(ours());
        ratios.push_back(times.back() / theirs());
    }
    for (auto _ : state)
        state.SetIterationTime(median(times));
    state.counters["ratio"] = median(ratios);
}
