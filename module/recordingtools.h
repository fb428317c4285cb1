#pragma once

#include <QString>
#include <QStringList>

namespace module {

enum class Comparison { Alike, Different, Unusable };

/**
 * Compares what crossed the adaptor in two recordings. Signals and actions must be alike in their
 * moments too, calls in their order; titles do not matter.
 * @param report  for a person: how far they are alike, the two lines that part them, and which
 *                signals and calls occur more often in one of them
 * @param error   one line that names the file, when one cannot be used
 */
Comparison compareRecordings(const QString &first, const QString &second, QStringList *report,
                             QString *error);

/**
 * Writes a part of a recording as one of its own. It begins with what brings the unit to the moment
 * that it is cut at: what was done there before, each time with what had been said last.
 * @param error  one line that names the file, when one cannot be used
 */
bool cutRecording(const QString &file, qint64 fromMs, qint64 toMs, const QString &part,
                  QString *error);

} // namespace module
