#pragma once

#include "quantities.h"
#include "vehiclesource.h"

namespace module {

/**
 * Page by page, what a car gives and what it does not, one line each.
 * @param present  by quantity, whether the car has it
 */
QStringList pageFindings(const QVector<bool> &present);

/** The same, page by page: the groups of its quantities that a car gives, and those that it does
 * not. */
QVector<Findings> groupsByPage(const QVector<bool> &present);
/** The name of a page; empty where a quantity is shown nowhere. */
QString pageName(ShownOn page);
/** The name of the page that shows a path; empty for a path that is shown nowhere. */
QString pageOfPath(const QString &path);

} // namespace module
