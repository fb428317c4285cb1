#pragma once

#include <QStringList>

namespace module {

/**
 * Finds a row of a table by its `name`.
 * @param error  one line with all names, when there is no such row
 * @return the index of the row; -1 when there is none
 */
template <typename Row, size_t Count>
int findByName(const Row (&rows)[Count], const QString &name, QString *error)
{
    QStringList names;
    for (const Row &row : rows) {
        if (name == QLatin1String(row.name))
            return names.size();
        names.append(QLatin1String(row.name));
    }
    *error =
        QStringLiteral("expected one of %1, got '%2'").arg(names.join(QStringLiteral(", ")), name);
    return -1;
}

} // namespace module
