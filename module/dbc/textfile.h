#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace module {

/**
 * A whole text file, for formats that are not read by the line.
 * @param most   bytes that such a file may have
 * @param error  one line that names the file, when it cannot be read
 */
std::optional<QByteArray> readTextFile(const QString &path, qint64 most, QString *error);

} // namespace module
