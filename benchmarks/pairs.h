#pragma once

#include <functional>

/** A round of a loop. @return what a step has taken of the processor, in seconds */
using Round = std::function<double()>;

/**
 * Registers a benchmark that runs two loops in turns, so that both meet the same load and the same
 * clock of the processor. Its ratio is the median of the rounds.
 */
void addPair(const char *name, int rounds, const Round &ours, const Round &theirs);
