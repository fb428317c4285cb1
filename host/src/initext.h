#pragma once

#include <QByteArrayList>
#include <QString>

/**
 * The text of an INI file, changed one value at a time: comments, order and the values of others
 * stay as they are. A key is "name", in the section [General] or before any, or "section/name".
 */
class IniText
{
public:
    explicit IniText(const QByteArray &text);

    /** Whether every line is empty, a comment, a section or an entry. */
    bool isValid() const;
    /** The value of a key; null when there is none. */
    QString value(const QString &key) const;
    void setValue(const QString &key, const QString &value);
    QByteArray text() const;

private:
    struct Place
    {
        int entry = -1;      // the key's line; the last one counts
        int sectionEnd = -1; // after the last line of the key's section
    };
    Place find(const QString &key) const;

    QByteArray m_mark; // a byte order mark before the first line
    QByteArrayList m_lines;
};
