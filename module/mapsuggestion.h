#pragma once

#include <QStringList>

#include <optional>

namespace module {

/**
 * Writes a map for a DBC file, as a start: it finds a signal for each quantity by its name and
 * unit. What a person should look at has a comment that begins with "doubtful".
 * @return the lines of the map
 * @param error  one line that names the file, when it cannot be used or nothing was found
 */
std::optional<QStringList> suggestMap(const QString &dbcPath, QString *error);

} // namespace module
