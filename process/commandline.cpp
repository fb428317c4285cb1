#include "commandline.h"

#include <QCommandLineParser>

#include <cmath>

namespace commandline {

// ---- Values -------------------------------------------------------------------------------------

static QString range(const char *kind, double lowest, double highest)
{
    static constexpr int digits = 10;
    return QStringLiteral("%1 from %2 to %3")
        .arg(QLatin1String(kind), QString::number(lowest, 'g', digits),
             QString::number(highest, 'g', digits));
}

QString readNumber(const QString &text, double lowest, double highest, double *number)
{
    bool isNumber = false;
    *number = text.toDouble(&isNumber);
    const bool isUsable = isNumber && *number >= lowest && *number <= highest;
    return isUsable ? QString() : range("a number", lowest, highest);
}

QString readWhole(const QString &text, double lowest, double highest, double *number)
{
    const bool isUsable =
        readNumber(text, lowest, highest, number).isEmpty() && *number == std::floor(*number);
    return isUsable ? QString() : range("a whole number", lowest, highest);
}

QString readSeconds(const QString &text, qint64 *ms)
{
    static constexpr double longest = 1e5;
    double seconds = 0;
    QString expected = readNumber(text, 0, longest, &seconds);
    if (expected.isEmpty())
        *ms = qRound64(seconds * 1000);
    return expected;
}

Reader text(QString *value)
{
    return [value](const QString &text) {
        *value = text;
        return QString();
    };
}

Reader flag(bool *value)
{
    return [value](const QString & /*none*/) {
        *value = true;
        return QString();
    };
}

Reader number(double lowest, double highest, double *value)
{
    return [=](const QString &text) { return readNumber(text, lowest, highest, value); };
}

Reader seconds(qint64 *ms)
{
    return [ms](const QString &text) { return readSeconds(text, ms); };
}

// ---- The command line ---------------------------------------------------------------------------

static bool mayBeEmpty(const Option &option)
{
    return !option.valueName || *option.valueName == '[';
}

/** A value that is left out is an empty one. */
static QStringList withEmptyValues(QStringList arguments, const QVector<Option> &options)
{
    for (const Option &option : options) {
        const QString given = QStringLiteral("--") + QLatin1String(option.name);
        for (int i = 1; option.valueName && mayBeEmpty(option) && i < arguments.size(); ++i) {
            const bool hasValue = i + 1 < arguments.size() && !arguments[i + 1].startsWith('-');
            if (arguments[i] == given && !hasValue)
                arguments[i] += QLatin1Char('=');
        }
    }
    return arguments;
}

/** How often, and with which values: a switch has empty ones. */
static QStringList valuesOf(const QCommandLineParser &parser, const Option &option)
{
    const QString name = QLatin1String(option.name);
    if (option.valueName)
        return parser.values(name);
    return parser.isSet(name) ? QStringList{QString()} : QStringList();
}

static bool readOptions(const QCommandLineParser &parser, const QVector<Option> &options,
                        QString *error)
{
    for (const Option &option : options) {
        const QStringList values = valuesOf(parser, option);
        for (const QString &value : values) {
            const bool isUsable = !value.isEmpty() || mayBeEmpty(option);
            const QString expected =
                isUsable ? option.read(value) : QString::fromLatin1(option.valueName);
            if (expected.isEmpty())
                continue;
            *error = QStringLiteral("--%1: expected %2, got '%3'")
                         .arg(QLatin1String(option.name), expected, value);
            return false;
        }
    }
    return true;
}

bool readCommandLine(const QStringList &arguments, const About &about,
                     const QVector<Option> &options, QString *text, QString *error)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QLatin1String(about.description));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    for (const Option &option : options)
        parser.addOption(
            {QLatin1String(option.name), option.help, QLatin1String(option.valueName)});
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    if (!parser.parse(withEmptyValues(arguments, options))) {
        *error = parser.errorText().replace(QLatin1Char('\n'), QLatin1Char(' ')) +
                 QStringLiteral(" See --help.");
        return false;
    }
    if (parser.isSet(help))
        *text = parser.helpText() + QLatin1String(about.examples);
    else if (parser.isSet(version))
        *text = QStringLiteral("%1 " NORDA_VERSION "\n").arg(QLatin1String(about.name));
    if (!text->isEmpty())
        return true;
    if (parser.positionalArguments().isEmpty())
        return readOptions(parser, options, error);
    *error = QStringLiteral("%1: expected an option, see --help")
                 .arg(parser.positionalArguments().constFirst());
    return false;
}

} // namespace commandline
