#include "textfile.h"

#include "linereader.h"

#include <QFile>

namespace module {

std::optional<QByteArray> readTextFile(const QString &path, qint64 most, QString *error)
{
    if (!LineReader(path, error).isOpen())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: expected a readable file: %2").arg(path, file.errorString());
        return std::nullopt;
    }
    // A file may grow while it is read, so its size alone is no limit; and most are far below it.
    static constexpr qint64 blockSize = 1 << 16;
    QByteArray content;
    for (QByteArray block = file.read(blockSize); !block.isEmpty() && content.size() <= most;
         block = file.read(blockSize))
        content += block;
    if (content.size() <= most)
        return content;
    *error = QStringLiteral("%1: expected at most %2 MB").arg(path).arg(most >> 20);
    return std::nullopt;
}

} // namespace module
