#pragma once

#include "vehiclesource.h"

#include <QSet>
#include <QVector>

namespace module {

/**
 * The signals that make the pages show values as unknown, in the order in which they have to
 * arrive.
 * @param reported  signals that report a value: they are left out
 */
QVector<Emission> unknownValues(const QSet<QByteArray> &reported);

/** The signal that shows a signal's value as unknown; without a name where there is none. */
Emission unknownValue(const QByteArray &signal);

} // namespace module
