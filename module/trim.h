#pragma once

#include <QString>

namespace module {

/** What the simulated car's climate control is equipped with. */
enum class Trim { Full, NoRear, Manual };

/** "full", "no-rear" or "manual". */
QString trimName(Trim trim);
/** Reads a trim's name. @return false for any other name */
bool trimFromName(const QString &name, Trim *trim);

} // namespace module
