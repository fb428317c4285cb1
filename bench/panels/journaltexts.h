#pragma once

#include "session/journal.h"

#include <QColor>

class QPalette;

// How the timeline and the plots show the entries of a journal.

QColor kindColor(Journal::Kind kind, const QPalette &palette);
QString entryText(const Journal *journal, const Journal::Entry &entry);
/** The entries of a kind from one moment to before another, a line each with its time. */
QStringList entryLines(const Journal *journal, Journal::Kind kind, qint64 fromMs, qint64 toMs);
