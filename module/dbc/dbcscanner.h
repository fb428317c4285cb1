#pragma once

#include <QByteArray>
#include <QString>

#include <string_view>

namespace module {

/**
 * Takes a DBC file apart, in place. What takes a piece that must be there returns whether it was;
 * the first that was not is the error.
 */
class DbcScanner
{
public:
    /** @param content  must outlive the scanner and every word it hands out */
    explicit DbcScanner(const QByteArray &content);

    bool isAtEnd();
    /** The line of what comes next, from 1. */
    int line();
    bool isAtLineStart();

    /** The word that comes next; empty where something else does. */
    std::string_view peekWord();
    /** Takes a character if it comes next. */
    bool skipIf(char c);
    /** Passes over a word, a text or a character. */
    bool skipToken();

    bool word(std::string_view *word, const char *expected);
    bool name(QString *name, const char *expected);
    bool symbol(char c);
    bool integer(qint64 lowest, qint64 highest, qint64 *value, const char *expected);
    /** A raw value: what lies beyond a signed number of 64 bits is taken by its bits. */
    bool rawValue(qint64 *value);
    bool number(double *value, const char *expected);
    bool text(QString *text, const char *expected);

    /** Sets the error, unless there is one, to what was expected here. @return false */
    bool fail(const QString &expected);
    /** The same for a line on its own, without what was found there. */
    bool failAt(int line, const QString &message);
    const QString &error() const { return m_error; }

private:
    void skipSpace();
    std::string_view textAhead() const;
    QByteArray restOfLine() const;

    const char *m_at;
    const char *m_end;
    const char *m_firstOnLine;
    int m_line = 1;
    QString m_error;
};

} // namespace module
