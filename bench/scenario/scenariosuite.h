#pragma once

#include "scenario/scenariorun.h"

#include <functional>

struct Options;

/** What a suite of scenarios came to: the exit codes of the bench. */
enum class SuiteOutcome { Passed = 0, Failed = 1, Unusable = 2 };

/**
 * Reads all scenarios, then plays each in a process of its own, so that none leaves anything behind
 * for the next and a crash is one failure; tells of each as it ends, and of all in JUnit's XML
 * where that is wanted.
 * @param play   what a process does: it makes its own application
 * @param error  one line, when a scenario or the report cannot be used
 */
SuiteOutcome playScenarios(const Options &options,
                           const std::function<ScenarioResult(const Scenario &scenario)> &play,
                           QString *error);
