#pragma once

#include "dbc/signalbinding.h"
#include "quantities.h"

namespace module {

/**
 * By the entries of a map, the quantity that each one feeds. Count for a path that is shown nowhere
 * or has no signal, and where the map has a better path for the same quantity.
 */
QVector<Quantity> shownQuantities(const SignalMap &map, const SignalBinding &binding);

/**
 * What a map makes of a DBC file, one line each: which path reaches which page, which paths are
 * shown nowhere, which signals are missing, and what looks wrong.
 * @param error  one line that names the file, when one of them cannot be used
 */
std::optional<QStringList> checkMap(const QString &dbcPath, const QString &mapPath, QString *error);

/** Whether a unit of a DBC file is a path's unit. No unit fits all. */
bool isUnitOf(Quantity quantity, const QString &dbcUnit);

} // namespace module
