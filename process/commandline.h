#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

namespace commandline {

/** Reads the value of an option. @return what was expected; empty where the value can be used */
using Reader = std::function<QString(const QString &value)>;

QString readNumber(const QString &text, double lowest, double highest, double *number);
QString readWhole(const QString &text, double lowest, double highest, double *number);
QString readSeconds(const QString &text, qint64 *ms);

// Readers of the kinds of values that options have. What they write to has to outlive them.
Reader text(QString *value);
Reader flag(bool *value);
Reader number(double lowest, double highest, double *value);
Reader seconds(qint64 *ms);

template <typename Whole>
Reader whole(double lowest, double highest, Whole *value)
{
    return [lowest, highest, value](const QString &text) {
        double number = 0;
        QString expected = readWhole(text, lowest, highest, &number);
        if (expected.isEmpty())
            *value = Whole(number);
        return expected;
    };
}

struct Option
{
    const char *name;
    const char *valueName; ///< null for a switch; in brackets where the value may be left out
    QString help;
    Reader read; ///< once for each time that the option is given
};

/** What --help and --version print beside the options. */
struct About
{
    const char *name;
    const char *description;
    const char *examples;
};

/**
 * Reads a command line of options only.
 * @param arguments  with the program's name first
 * @param text       what --help or --version prints; no option is read then
 * @param error      one line that names the option and what it expects
 * @return false when the arguments cannot be used
 */
bool readCommandLine(const QStringList &arguments, const About &about,
                     const QVector<Option> &options, QString *text, QString *error);

} // namespace commandline
