#pragma once

#include "scenario/scenariorun.h"

/** How many of them have failed. */
int failedIn(const QVector<ScenarioResult> &results);
void printResult(const ScenarioResult &result);
/** @param error  one line, when the file cannot be written */
bool writeJUnit(const QString &path, const QVector<ScenarioResult> &results, QString *error);
