#pragma once

#include "scenario/scenariorun.h"

#include <functional>

struct Options;

/** The outcome of a suite of scenarios, as exit codes of the bench. */
enum class SuiteOutcome { Passed = 0, Failed = 1, Unusable = 2 };

/**
 * Reads all scenarios, then plays each in a process of its own, so that none affects the next and a
 * crash is one failure. Prints each result as it ends, and writes JUnit XML on request.
 * @param play   runs in the process and makes its own application
 * @param error  one line, when a scenario or the report cannot be used
 */
SuiteOutcome playScenarios(const Options &options,
                           const std::function<ScenarioResult(const Scenario &scenario)> &play,
                           QString *error);
