#include "dbcscanner.h"

#include "linereader.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace module {

static bool isSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r') || c == '\0';
}

static bool isWordPart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/** Old tools write Latin-1, newer ones UTF-8. */
static QString decoded(std::string_view bytes)
{
    QString text = QString::fromUtf8(bytes.data(), int(bytes.size()));
    if (text.contains(QChar::ReplacementCharacter))
        text = QString::fromLatin1(bytes.data(), int(bytes.size()));
    return text.replace(QLatin1String("\\\""), QLatin1String("\""));
}

DbcScanner::DbcScanner(const QByteArray &content)
    : m_at(content.constData()), m_end(m_at + content.size())
{
    if (content.startsWith("\xEF\xBB\xBF"))
        m_at += 3;
    skipSpace();
    m_firstOnLine = m_at;
}

void DbcScanner::skipSpace()
{
    const int before = m_line;
    for (; m_at != m_end && isSpace(*m_at); ++m_at)
        m_line += *m_at == '\n';
    if (m_line != before)
        m_firstOnLine = m_at;
}

bool DbcScanner::isAtEnd()
{
    skipSpace();
    return m_at == m_end;
}

int DbcScanner::line()
{
    skipSpace();
    return m_line;
}

bool DbcScanner::isAtLineStart()
{
    skipSpace();
    return m_at == m_firstOnLine;
}

std::string_view DbcScanner::peekWord()
{
    skipSpace();
    const char *end = std::find_if_not(m_at, m_end, isWordPart);
    return {m_at, size_t(end - m_at)};
}

bool DbcScanner::skipIf(char c)
{
    skipSpace();
    if (m_at == m_end || *m_at != c)
        return false;
    ++m_at;
    return true;
}

/** A text with its quotes; empty where none begins or none ends. */
std::string_view DbcScanner::textAhead() const
{
    if (m_at == m_end || *m_at != '"')
        return {};
    const char *at = m_at + 1;
    while (at != m_end && *at != '"')
        at += *at == '\\' && m_end - at > 1 ? 2 : 1;
    return at == m_end ? std::string_view() : std::string_view(m_at, size_t(at + 1 - m_at));
}

bool DbcScanner::skipToken()
{
    const std::string_view word = peekWord();
    const bool isText = m_at != m_end && *m_at == '"';
    const std::string_view text = textAhead();
    if (isText && text.empty())
        return fail(QStringLiteral("a text that ends"));
    m_line += int(std::count(text.begin(), text.end(), '\n'));
    m_at += std::max<size_t>({word.size(), text.size(), m_at == m_end ? 0u : 1u});
    return true;
}

bool DbcScanner::word(std::string_view *word, const char *expected)
{
    *word = peekWord();
    m_at += word->size();
    return !word->empty() || fail(QLatin1String(expected));
}

bool DbcScanner::name(QString *name, const char *expected)
{
    std::string_view found;
    if (!word(&found, expected))
        return false;
    *name = QString::fromLatin1(found.data(), int(found.size()));
    return true;
}

bool DbcScanner::symbol(char c)
{
    return skipIf(c) || fail(QStringLiteral("'%1'").arg(QLatin1Char(c)));
}

bool DbcScanner::integer(qint64 lowest, qint64 highest, qint64 *value, const char *expected)
{
    skipSpace();
    const auto result = std::from_chars(m_at, m_end, *value);
    if (result.ec != std::errc() || *value < lowest || *value > highest)
        return fail(QLatin1String(expected));
    m_at = result.ptr;
    return true;
}

bool DbcScanner::rawValue(qint64 *value)
{
    skipSpace();
    quint64 bits = 0;
    auto result = std::from_chars(m_at, m_end, *value);
    if (result.ec == std::errc::result_out_of_range) {
        result = std::from_chars(m_at, m_end, bits);
        *value = qint64(bits);
    }
    if (result.ec != std::errc())
        return fail(QStringLiteral("a whole number or ';'"));
    m_at = result.ptr;
    return true;
}

bool DbcScanner::number(double *value, const char *expected)
{
    skipSpace();
    const char *start = m_at != m_end && *m_at == '+' ? m_at + 1 : m_at;
    const auto result = std::from_chars(start, m_end, *value);
    if (result.ec != std::errc() || !std::isfinite(*value))
        return fail(QLatin1String(expected));
    m_at = result.ptr;
    return true;
}

bool DbcScanner::text(QString *text, const char *expected)
{
    skipSpace();
    const std::string_view found = textAhead();
    if (found.empty())
        return fail(QLatin1String(expected));
    *text = decoded(found.substr(1, found.size() - 2));
    m_line += int(std::count(found.begin(), found.end(), '\n'));
    m_at += found.size();
    return true;
}

QByteArray DbcScanner::restOfLine() const
{
    const char *end = std::find_if(m_at, m_end, [](char c) { return c == '\n' || c == '\r'; });
    return {m_at, int(end - m_at)};
}

bool DbcScanner::fail(const QString &expected)
{
    skipSpace();
    const QString found = m_at == m_end ? QStringLiteral("the end of the file")
                                        : QStringLiteral("'%1'").arg(excerpt(restOfLine()));
    return failAt(m_line, QStringLiteral("expected %1, found %2").arg(expected, found));
}

bool DbcScanner::failAt(int line, const QString &message)
{
    if (m_error.isEmpty())
        m_error = QStringLiteral("line %1: %2").arg(line).arg(message);
    return false;
}

} // namespace module
