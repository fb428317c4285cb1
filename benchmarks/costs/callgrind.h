#pragma once

#include "costtable.h"

#include <QList>

/**
 * Runs this program under callgrind with what makes every run alike: once for each of costRuns(),
 * all at the same time.
 *
 * @param error  one line that says what failed
 */
QList<Cost> countUnderCallgrind(QString *error);
