#pragma once

#include <QHash>
#include <QString>
#include <QVariant>
#include <QVector>

/** What the documentation of a header says of a method. */
struct MethodWords
{
    QString brief;
    QHash<QString, QString> arguments; ///< by name
};

/** The documented methods of a header, by name. */
QHash<QString, MethodWords> parseHeaderWords(const QString &header);
/** The words for a signal or a command of the adaptor or the vehicle service; read once. */
MethodWords headerWords(const QString &method);

/** Names that the words for an argument give to its values, its bits or its elements. */
struct NamedValues
{
    enum Kind { None, Values, Bits, Elements };
    struct Name
    {
        int number;
        QString text;
    };

    Kind kind = None;
    QVector<Name> names;
    QString other; ///< the name of all other values, empty for none

    /** @param type  of the argument: elements are what a list has */
    static NamedValues read(const QString &words, int type);

    /** The name of a value; the names of the bits of a value. Empty for none. */
    QString nameOf(int value) const;
    /** A value with its names: "2 warning", "40: rear right warns, texts are valid". */
    QString describe(const QVariant &value) const;
};
