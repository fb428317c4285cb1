#include "program/configuration.h"

#include "pluginfile.h"
#include "translator.h"
#include "unitlanguage.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QStyleFactory>

static const QString usualFile = QStringLiteral("/etc/norda/unit.conf");
static constexpr qint64 largestFile = 1 << 16;

static const char examples[] = R"(
Options with one dash are Qt's, for instance:
  -platform linuxfb          the display: linuxfb, eglfs, xcb, offscreen
  -plugin evdevtouch:/dev/input/event0
                             an input device

Examples:
  norda-unit -platform linuxfb                 as configured, on the framebuffer
  norda-unit --module session --data ~/unit    with a module on the desktop's own bus

Exit codes: 0 ended by INT or TERM, 2 unusable configuration, arguments or plugin.
)";

/** A key of the file, which is an option too. */
struct Row
{
    const char *key;
    const char *valueName;
    const char *variable; // overrides the file; null for none
    const char *help;
    /** @return what was expected; empty where the value can be used */
    QString (*read)(const QString &value, Configuration &configuration);
};

// ---- Values -------------------------------------------------------------------------------------

static QString readPlugin(const QString &value, Configuration &configuration)
{
    configuration.plugin = value;
    return faultOfPluginFile(value).isEmpty() ? QString()
                                              : QStringLiteral("a plugin file that can be read");
}

static QString readModule(const QString &value, Configuration &configuration)
{
    static const QRegularExpression address(QStringLiteral("\\A[a-z][a-z-]*:\\S*\\z"));
    configuration.module = value == QLatin1String("none") ? QString() : value;
    const bool isName = value == QLatin1String("none") || value == QLatin1String("session") ||
                        value == QLatin1String("system");
    return isName || address.match(value).hasMatch()
               ? QString()
               : QStringLiteral("'session', 'system', 'none' or the address of a bus such as "
                                "unix:path=/run/bus");
}

static QString readData(const QString &value, Configuration &configuration)
{
    const QFileInfo folder(value);
    configuration.data = folder.absoluteFilePath();
    return QDir().mkpath(configuration.data) && folder.isDir() && folder.isWritable()
               ? QString()
               : QStringLiteral("a folder that can be written");
}

static QString readLanguage(const QString &value, Configuration &configuration)
{
    configuration.language = value;
    return Translator::languages().contains(value) ? QString() : UnitLanguage::expected();
}

static QString readStyle(const QString &value, Configuration &configuration)
{
    const QStringList styles = QStyleFactory::keys();
    configuration.style = value;
    return styles.contains(value, Qt::CaseInsensitive)
               ? QString()
               : QStringLiteral("one of %1").arg(styles.join(QStringLiteral(", ")));
}

static QString readPage(const QString &value, Configuration &configuration)
{
    QStringList names;
    for (const Page &page : pages) {
        names.append(QString::fromLatin1(page.name).toLower());
        if (names.constLast() != value)
            continue;
        configuration.page = page.window;
        return {};
    }
    return QStringLiteral("one of %1").arg(names.join(QStringLiteral(", ")));
}

static QString readSwitch(const QString &value, bool *on)
{
    *on = value == QLatin1String("on");
    return *on || value == QLatin1String("off") ? QString() : QStringLiteral("'on' or 'off'");
}

// clang-format off
static const Row rows[] = {
    {"plugin", "FILE", nullptr, "The plugin to load; without it the installed one.", readPlugin},
    {"module", "BUS", "NORDA_MODULE_BUS",
        "Where the vehicle module is: \"system\" (as usual) or \"session\" for that D-Bus, the address "
        "of a bus, or \"none\".", readModule},
    {"data", "DIR", "NORDA_HOST_ROOT", "Folder of the unit's settings; without it in the user's data folder.", readData},
    {"language", "NAME", nullptr, "Language of the unit: en, de, fr or es; without it the one that was chosen last, at first the system's.", readLanguage},
    {"page", "NAME", nullptr, "Page to open where none is restored: gauges (as usual), vehicle, climate, "
        "parking, settings or about.", readPage},
    {"restore-page", "on|off", nullptr, "Whether the page that was open last is opened again; on as usual.",
        [](const QString &value, Configuration &c) { return readSwitch(value, &c.restoresPage); }},
    {"cursor", "on|off", nullptr, "Whether a mouse pointer is shown; off as usual.",
        [](const QString &value, Configuration &c) { return readSwitch(value, &c.showsCursor); }},
    {"style", "NAME", nullptr, "Qt style of the standard controls; Fusion as usual.", readStyle},
};
// clang-format on

/** A value, and where it comes from: a line and key of the file, a variable or an option. */
struct Value
{
    QString text;
    QString place;
};
using Values = QHash<QString, Value>; // by key

static bool isKey(const QString &key)
{
    return std::any_of(std::begin(rows), std::end(rows),
                       [&key](const Row &row) { return key == QLatin1String(row.key); });
}

static QString fault(const QString &expected, const QString &value)
{
    return expected.isEmpty() ? QString()
                              : QStringLiteral("expected %1, got '%2'").arg(expected, value);
}

// ---- The file -----------------------------------------------------------------------------------

static QString keysInWords()
{
    QStringList keys;
    for (const Row &row : rows)
        keys.append(QLatin1String(row.key));
    return keys.join(QStringLiteral(", "));
}

/** Takes the value of "key = value". @return what is wrong with the line, empty for nothing */
static QString readEntry(const QString &line, const QString &place, Values *values)
{
    const int equals = line.indexOf(QLatin1Char('='));
    if (equals < 0)
        return fault(QStringLiteral("key = value"), line);
    const QString key = line.left(equals).trimmed();
    if (!isKey(key))
        return QStringLiteral("%1: expected one of the keys %2").arg(key, keysInWords());
    if (values->contains(key))
        return QStringLiteral("%1: expected once, got it again").arg(key);
    values->insert(key, {line.mid(equals + 1).trimmed(), place + QLatin1Char(' ') + key});
    return {};
}

static bool isLeftOut(const QString &line)
{
    return line.isEmpty() || line.startsWith(QLatin1Char('#')) ||
           line.startsWith(QLatin1Char(';')) || line == QLatin1String("[unit]");
}

static bool readFile(const QString &path, Values *values, QString *error)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly) || file.size() > largestFile) {
        *error = QStringLiteral("--config: expected a file that can be read, got '%1'").arg(path);
        return false;
    }
    int number = 0;
    for (const QString &text : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        const QString place = QStringLiteral("%1:%2:").arg(path).arg(++number);
        const QString line = text.trimmed();
        const QString problem = isLeftOut(line) ? QString() : readEntry(line, place, values);
        if (problem.isEmpty())
            continue;
        *error = place + QLatin1Char(' ') + problem;
        return false;
    }
    return true;
}

// ---- What holds ---------------------------------------------------------------------------------

/** The environment overrides the file, and an option overrides both. */
static void applyOverrides(const QCommandLineParser &parser, Values *values)
{
    for (const Row &row : rows) {
        const QString key = QLatin1String(row.key);
        if (row.variable && !qEnvironmentVariableIsEmpty(row.variable))
            values->insert(key, {qEnvironmentVariable(row.variable), QLatin1String(row.variable)});
        if (parser.isSet(key))
            values->insert(key, {parser.value(key), QStringLiteral("--") + key});
    }
}

/** Only what holds has to be usable: a user may have no right to what the file states. */
static bool use(const Values &values, Configuration *configuration, QString *error)
{
    for (const Row &row : rows) {
        const auto value = values.constFind(QLatin1String(row.key));
        if (value == values.cend())
            continue;
        const QString problem = fault(value->text.isEmpty() ? QString::fromLatin1(row.valueName)
                                                            : row.read(value->text, *configuration),
                                      value->text);
        if (problem.isEmpty())
            continue;
        *error = QStringLiteral("%1: %2").arg(value->place, problem);
        return false;
    }
    return true;
}

static void addOptions(QCommandLineParser *parser)
{
    parser->setApplicationDescription(
        QStringLiteral("A head unit: loads the plugin, shows its pages on the whole display, and "
                       "connects to the vehicle module. Each option but --config is a key of the "
                       "configuration file too."));
    parser->addOption(
        {QStringLiteral("config"),
         QStringLiteral("The configuration file; %1 where there is one.").arg(usualFile),
         QStringLiteral("FILE")});
    for (const Row &row : rows)
        parser->addOption(
            {QLatin1String(row.key), QLatin1String(row.help), QLatin1String(row.valueName)});
}

/** @return the text to print in place of a run, empty for none */
static QString parse(QCommandLineParser *parser, const QStringList &arguments, QString *error)
{
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Print all options and exit."));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Print the version and exit."));
    parser->addOptions({help, version});
    if (!parser->parse(QStringList(QStringLiteral("norda-unit")) + arguments))
        *error = parser->errorText().replace(QLatin1Char('\n'), QLatin1Char(' ')) +
                 QStringLiteral(" See --help.");
    else if (parser->isSet(help))
        return parser->helpText() + QLatin1String(examples);
    else if (parser->isSet(version))
        return QStringLiteral("norda-unit " NORDA_VERSION "\n");
    else if (!parser->positionalArguments().isEmpty())
        *error = QStringLiteral("%1: expected an option, see --help")
                     .arg(parser->positionalArguments().constFirst());
    return {};
}

bool Configuration::read(const QStringList &arguments, QString *error)
{
    QCommandLineParser parser;
    addOptions(&parser);
    text = parse(&parser, arguments, error);
    if (!error->isEmpty() || !text.isEmpty())
        return error->isEmpty();
    module = QStringLiteral("system");
    plugin = usualPlugin();
    Values values;
    const bool isGiven = parser.isSet(QStringLiteral("config"));
    const QString file = isGiven ? parser.value(QStringLiteral("config")) : usualFile;
    if ((isGiven || QFileInfo::exists(file)) && !readFile(file, &values, error))
        return false;
    applyOverrides(parser, &values);
    return use(values, this, error);
}
