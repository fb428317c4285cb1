#pragma once

#include "session/journal.h"

/**
 * The state snapshot of a journal: the last signals up to a moment, in their order, as indexes of
 * entries.
 */
QVector<int> snapshotOf(const Journal &journal, qint64 ms);
