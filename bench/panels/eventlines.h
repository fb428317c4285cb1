#pragma once

#include "session/journal.h"

/** The line that a recording has for a signal or a call. */
QString recordedLine(qint64 ms, Journal::Kind kind, const QString &name,
                     const QVariantList &arguments);
/** The line of a scenario that emits a signal, or expects a call, with its time. */
QString scenarioLineOf(qint64 ms, Journal::Kind kind, const QString &name,
                       const QVariantList &arguments);
