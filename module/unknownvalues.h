#pragma once

#include "vehiclesource.h"

#include <QSet>
#include <QVector>

namespace module {

/**
 * The signals by which the pages show that a value is unknown, in the order in which they have to
 * arrive.
 * @param reported  the signals that bring a value: what they show is left out
 */
QVector<Emission> unknownValues(const QSet<QByteArray> &reported);

} // namespace module
