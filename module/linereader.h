#pragma once

#include <QByteArray>
#include <QFile>

namespace module {

/** Reads a text file line by line, with a limit for the length of a line. */
class LineReader
{
public:
    static constexpr int LongestLine = 64 * 1024;

    /** @param error  one line that names the file, when it cannot be read */
    LineReader(const QString &path, QString *error);

    bool isOpen() const { return m_file.isOpen(); }
    /** Reads the next line, without its end. @return false at the end of the file */
    bool next(QByteArray *line);
    /** Number of the last line, from 1. */
    int lineNumber() const { return m_number; }
    /** Whether the last line was too long; it is empty then. */
    bool wasTooLong() const { return m_tooLong; }
    /** Whether the last line ended with the file instead of a line end. */
    bool wasCutOff() const { return m_cutOff; }

private:
    QFile m_file;
    int m_number = 0;
    bool m_tooLong = false;
    bool m_cutOff = false;
};

/** @return whether there is nothing but hexadecimal digits */
bool isHex(const QByteArray &text);

/** The start of a damaged text, printable, for an error message. */
QString excerpt(const QByteArray &text);

} // namespace module
