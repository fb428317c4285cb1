#include "linereader.h"

#include <QFileInfo>

#include <algorithm>
#include <cctype>

namespace module {

LineReader::LineReader(const QString &path, QString *error) : m_file(path)
{
    if (QFileInfo(path).isDir())
        *error = QStringLiteral("%1: expected a file, found a directory").arg(path);
    else if (QFileInfo::exists(path) && !QFileInfo(path).isFile())
        *error = QStringLiteral("%1: expected a file, found a pipe or a device").arg(path);
    else if (!m_file.open(QIODevice::ReadOnly))
        *error = QStringLiteral("%1: expected a readable file: %2").arg(path, m_file.errorString());
}

bool LineReader::next(QByteArray *line)
{
    if (m_file.atEnd())
        return false;
    ++m_number;
    *line = m_file.readLine(LongestLine + 1);
    m_tooLong = !line->endsWith('\n') && line->size() >= LongestLine;
    m_cutOff = !line->endsWith('\n');
    if (m_tooLong) {
        line->clear();
        QByteArray rest;
        do {
            rest = m_file.readLine(LongestLine + 1);
        } while (!rest.isEmpty() && !rest.endsWith('\n'));
        m_cutOff = rest.isEmpty();
        return true;
    }
    while (line->endsWith('\n') || line->endsWith('\r'))
        line->chop(1);
    return true;
}

bool isHex(const QByteArray &text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return std::isxdigit(static_cast<unsigned char>(c)); });
}

QString excerpt(const QByteArray &text)
{
    static constexpr int longest = 40;
    QString shown;
    for (const char c : text.left(longest))
        shown.append(c >= 0x20 && c < 0x7f ? QLatin1Char(c) : QLatin1Char('?'));
    return text.size() > longest ? shown + QStringLiteral("...") : shown;
}

} // namespace module
