#pragma once

#include <vector>

/** Some costs that are measured in a process of their own. */
struct CostRun
{
    const char *name;
    bool fromStart; ///< collects from the start of the process on
    void (*measure)();
};

const std::vector<CostRun> &costRuns();

// From the start of the process to its first painted frame
void measureStartOfPage();
void measureStartOfEmptyWindow();

/** Signals, touches, changes of page and steps of a needle in a head unit. */
void measureUnit();

/** The simulated car at unlimited speed, with a unit that shows what it sends. */
void measureDrive();
