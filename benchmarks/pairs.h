#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <vector>

double median(std::vector<double> values);

/** A round of a loop. @return what a step has taken of the processor, in seconds */
using Round = std::function<double()>;

/**
 * Measures two loops in turns, so that both meet the same load and the same clock of the processor.
 * The ratio of the two is the median of the rounds, which the benchmark reports as a counter.
 */
void measureInTurns(benchmark::State &state, int rounds, const Round &ours, const Round &theirs);
