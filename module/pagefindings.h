#pragma once

#include <QStringList>
#include <QVector>

namespace module {

/**
 * Page by page, what a car gives and what it does not, one line each.
 * @param present  by quantity, whether the car has it
 */
QStringList pageFindings(const QVector<bool> &present);

/** The name of the page that shows a path; empty for a path that is shown nowhere. */
QString pageOfPath(const QString &path);

} // namespace module
