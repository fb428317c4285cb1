#include "initext.h"

#include <cstring>

struct Escape
{
    char letter;
    char character;
};

static constexpr Escape escapes[] = {
    {'\\', '\\'}, {'"', '"'}, {'n', '\n'}, {'r', '\r'}, {'t', '\t'},
};

static QByteArray quoted(const QByteArray &value)
{
    QByteArray text;
    for (char character : value) {
        for (const Escape &escape : escapes) {
            if (escape.character != character)
                continue;
            text.append('\\');
            character = escape.letter;
            break;
        }
        text.append(character);
    }
    return '"' + text + '"';
}

static QByteArray encoded(const QString &value)
{
    const QByteArray text = value.toUtf8();
    bool isPlain = text == text.trimmed();
    for (char character : text)
        isPlain = isPlain && !strchr(";,=\"\\\n\r\t", character);
    return isPlain ? text : quoted(text);
}

static char unescaped(char letter)
{
    for (const Escape &escape : escapes) {
        if (escape.letter == letter)
            return escape.character;
    }
    return letter;
}

static QString decoded(const QByteArray &text)
{
    if (!text.startsWith('"'))
        return QString::fromUtf8(text.split(';').constFirst().trimmed());
    QByteArray value;
    for (int i = 1; i < text.size() && text[i] != '"'; ++i) {
        if (text[i] == '\\' && i + 1 < text.size())
            value.append(unescaped(text[++i]));
        else
            value.append(text[i]);
    }
    return QString::fromUtf8(value);
}

static bool isSection(const QByteArray &line)
{
    return line.startsWith('[') && line.endsWith(']');
}

static bool isComment(const QByteArray &line)
{
    return line.startsWith(';') || line.startsWith('#');
}

static const QByteArray byteOrderMark = "\xEF\xBB\xBF";

IniText::IniText(const QByteArray &text) : m_lines(text.split('\n'))
{
    if (!text.startsWith(byteOrderMark))
        return;
    m_mark = byteOrderMark;
    m_lines.first().remove(0, byteOrderMark.size());
}

QByteArray IniText::text() const
{
    return m_mark + m_lines.join('\n');
}

bool IniText::isValid() const
{
    for (const QByteArray &each : m_lines) {
        const QByteArray line = each.trimmed();
        const bool isKnown =
            line.isEmpty() || isComment(line) || isSection(line) || line.indexOf('=') > 0;
        if (!isKnown || line.contains('\0'))
            return false;
    }
    return true;
}

IniText::Place IniText::find(const QString &key) const
{
    static const QByteArray general = "General";
    const int slash = key.indexOf(QLatin1Char('/'));
    const QByteArray section = slash < 0 ? general : key.left(slash).toUtf8();
    const QByteArray name = key.mid(slash + 1).toUtf8();

    Place place;
    bool isInside = section == general;
    for (int i = 0; i < m_lines.size(); ++i) {
        const QByteArray line = m_lines[i].trimmed();
        if (isSection(line))
            isInside = line.mid(1, line.size() - 2) == section;
        if (!isInside || line.isEmpty())
            continue;
        place.sectionEnd = i + 1;
        if (!isComment(line) && line.contains('=') &&
            line.left(line.indexOf('=')).trimmed() == name)
            place.entry = i;
    }
    return place;
}

QString IniText::value(const QString &key) const
{
    const int entry = find(key).entry;
    if (entry < 0)
        return QString();
    const QByteArray &line = m_lines[entry];
    const QString value = decoded(line.mid(line.indexOf('=') + 1).trimmed());
    return value.isNull() ? QStringLiteral("") : value;
}

void IniText::setValue(const QString &key, const QString &value)
{
    const int slash = key.indexOf(QLatin1Char('/'));
    const QByteArray line = key.mid(slash + 1).toUtf8() + '=' + encoded(value);
    const Place place = find(key);
    if (place.entry >= 0) {
        m_lines[place.entry] = line;
    } else if (place.sectionEnd >= 0) {
        m_lines.insert(place.sectionEnd, line);
    } else {
        const QByteArray section = slash < 0 ? QByteArray("General") : key.left(slash).toUtf8();
        if (m_lines.constLast().trimmed().isEmpty())
            m_lines.removeLast();
        m_lines << '[' + section + ']' << line << QByteArray();
    }
}
