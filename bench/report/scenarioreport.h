#pragma once

#include "scenario/scenarioresult.h"

/** A page about scenarios: the steps of each, what was expected and seen, and pictures of failures.
 */
QByteArray pageOf(const QVector<ScenarioResult> &results);
