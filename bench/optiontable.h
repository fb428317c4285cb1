#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

struct Options;

/** What was given for an option, and where it goes. */
struct Given
{
    const char *option;
    QStringList values;
    Options *options;
    QString *error;

    QString text() const { return values.value(0); }
    // All but isNumber() set the error when they return false.
    bool fail(const QString &message) const;
    bool failExpecting(const QString &expected) const;
    bool failExpectingNumber(double lowest, double highest, const QString &orElse = {},
                             const QString &kind = QStringLiteral("a number")) const;
    bool isNumber(double lowest, double highest, double *value) const;
    bool readNumber(double lowest, double highest, double *value) const;
    bool readWholeNumber(double lowest, double highest, double *value) const;
    bool readFile(QString *file) const;
    bool readFolder(QString *folder) const;
};

struct OptionRow
{
    const char *name;
    const char *valueName;   // null for a switch
    const char *defaultText; // null for none: the option is read only where it is given
    QString help;
    bool (*read)(const Given &given);
};

/** All options; each is read after those before it. */
QVector<OptionRow> optionRows();

// Messages for results that cannot be written.
QString notAFile(const QString &option, const QString &file);
QString notAFolder(const QString &option, const QString &folder);
