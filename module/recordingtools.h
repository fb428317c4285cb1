#pragma once

#include <QString>
#include <QStringList>

namespace module {

enum class Comparison { Identical, Different, Unusable };

/**
 * Compares two recordings. Signals and actions have to be identical with their times, calls in
 * their order; titles do not matter.
 * @param report  for a person: up to where they are identical, the first difference, and which
 *                signals and calls occur more often in one of them
 *                signals and calls occur more often in one of them
 * @param error   one line that names the file, when one cannot be used
 */
Comparison compareRecordings(const QString &first, const QString &second, QStringList *report,
                             QString *error);

/**
 * Writes a part of a recording as a recording. It begins with what brings the unit to that moment:
 * the actions before, each after the state snapshot of its time.
 * @param error  one line that names the file, when one cannot be used
 */
bool cutRecording(const QString &file, qint64 fromMs, qint64 toMs, const QString &part,
                  QString *error);

} // namespace module
