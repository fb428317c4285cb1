#pragma once

#include <QString>
#include <QStringList>

namespace module {

enum class Comparison { Identical, Different, Unusable };

/**
 * Compares the signals and calls of two recordings, and their times; titles do not matter.
 * @param report  for a person: up to where they are identical, the first difference, and which
 *                signals and calls occur more often in one of them
 * @param error   one line that names the file, when one cannot be used
 */
Comparison compareRecordings(const QString &first, const QString &second, QStringList *report,
                             QString *error);

/**
 * Writes a part of a recording as a recording. It begins with the state snapshot of its start.
 * @param error  one line that names the file, when one cannot be used
 */
bool cutRecording(const QString &file, qint64 fromMs, qint64 toMs, const QString &part,
                  QString *error);

} // namespace module
