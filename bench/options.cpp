#include "options.h"

#include "live/liveports.h"
#include "optiontable.h"
#include "outputfile.h"
#include "service/remotesource.h"
#include "window/commands.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>

static const char examples[] = R"(
Examples:
  norda-bench                                  the simulated car, in a window
  norda-bench drive.csv --speed 4              a recorded drive, four times as fast
  norda-bench --headless --speed max --gallery out --summary out/s.json
                                               a whole drive without a display
  norda-bench --source raw.log --dbc car.dbc --map car.json
                                               a car's own frames
  norda-bench --source elm327:/dev/ttyUSB0     the car that is plugged in
  norda-bench --source dbus --record session.jsonl
                                               watch and record a running vehicle module
  norda-bench --serve                          be the vehicle module of other units
  norda-bench --record session.jsonl           record all that crosses the adaptor
  norda-bench --source session.jsonl           and play it back
  norda-bench --script bench/scenario/library  play all shipped scenarios
  norda-bench --check libmyplugin.so           would a head unit accept it?
  norda-bench --fault silence:0.3 --fault truncate --seed 7
                                               a module that misbehaves
  norda-bench --platform vnc:port=5901         shown to a VNC viewer on this machine
  norda-bench --diff good.jsonl bad.jsonl      the first difference of two recordings
  norda-bench --cut session.jsonl --from 90 --to 120 --record part.jsonl
                                               half a minute of one

Exit codes: 0 done, 1 an expectation failed or recordings differ, 2 unusable input or arguments.
)";

static QCommandLineOption toOption(const OptionRow &row)
{
    QCommandLineOption option(QLatin1String(row.name), row.help);
    option.setValueName(QLatin1String(row.valueName));
    if (row.defaultText)
        option.setDefaultValue(QLatin1String(row.defaultText));
    return option;
}

/** An empty value is a mistake, as of a variable that is not set in a script. */
static bool hasValues(const QCommandLineParser &parser, QString *error)
{
    for (const OptionRow &row : optionRows()) {
        const QString name = QLatin1String(row.name);
        if (!row.valueName || !parser.isSet(name) || !parser.values(name).contains(QString()))
            continue;
        *error =
            QStringLiteral("--%1: expected %2, got ''").arg(name, QLatin1String(row.valueName));
        return false;
    }
    return true;
}

/** Files without an option are the recordings of --diff, or the drive. */
static bool readFiles(const QCommandLineParser &parser, Options *options, QString *error)
{
    const QString diff = QStringLiteral("diff");
    const QStringList files = parser.positionalArguments();
    if (parser.isSet(diff)) {
        options->diff = parser.values(diff) + files;
        if (options->diff.size() == 2)
            return true;
        *error =
            QStringLiteral("--diff: expected two recordings, got %1").arg(options->diff.size());
        return false;
    }
    if (files.size() + int(parser.isSet(QStringLiteral("source"))) > 1) {
        *error =
            QStringLiteral("%1: expected one drive, got another before it").arg(files.constLast());
        return false;
    }
    options->setup.source = files.value(0, options->setup.source);
    return true;
}

/** An option that refines another means nothing without it. */
static bool hasCompanions(const QCommandLineParser &parser, QString *error)
{
    static constexpr const char *companions[][2] = {
        {"from", "cut"}, {"to", "cut"},        {"record-limit", "record"}, {"junit", "script"},
        {"map", "dbc"},  {"check-map", "map"}, {"suggest-map", "dbc"}};
    for (const auto &[option, other] : companions) {
        if (!parser.isSet(QLatin1String(option)) || parser.isSet(QLatin1String(other)))
            continue;
        *error = QStringLiteral("--%1: expected with --%2, got it alone")
                     .arg(QLatin1String(option), QLatin1String(other));
        return false;
    }
    return true;
}

/** Some options are for a car that is connected, and mean nothing with another source. */
static bool fitsSource(const QCommandLineParser &parser, const QString &source, QString *error)
{
    for (const char *option : {"ask", "requests", "log-can"}) {
        if (!parser.isSet(QLatin1String(option)) || module::isLiveName(source))
            continue;
        *error = QStringLiteral("--%1: expected with a car that is connected, got '%2'")
                     .arg(QLatin1String(option), source);
        return false;
    }
    return true;
}

/** What a bus is called, whichever name it has on the command line. */
static QString busOf(const QString &address)
{
    return address == QLatin1String("session") ? qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS")
                                               : address;
}

static bool canHaveModuleProcess(const Options &options, QString *error)
{
    const bool hasRun = options.headless || !options.scripts.isEmpty();
    if (!options.setup.hasModuleProcess || (hasRun && options.serve.isEmpty()))
        return true;
    *error = QStringLiteral("--module-process: expected with --script or --headless, and without "
                            "--serve");
    return false;
}

/** A module that followed itself would receive what it emits, and emit it again. */
static bool canServe(const Options &options, QString *error)
{
    const QString &source = options.setup.source;
    if (options.serve.isEmpty())
        return true;
    if (options.isTool() || !options.scripts.isEmpty())
        *error = QStringLiteral("--serve: expected with a drive, got it with --script or a tool");
    else if (module::isRemoteName(source) &&
             busOf(module::addressIn(source)) == busOf(options.serve))
        *error = QStringLiteral("--serve: expected another bus than that of --source, got '%1'")
                     .arg(options.serve);
    return error->isEmpty();
}

static bool readRows(const QCommandLineParser &parser, Options *options, QString *error)
{
    for (const OptionRow &row : optionRows()) {
        const QString name = QLatin1String(row.name);
        if (!row.read || (!row.defaultText && !parser.isSet(name)))
            continue;
        if (!row.read({row.name, parser.values(name), options, error}))
            return false;
    }
    return true;
}

/** Where two paths of one file are the same, whether it exists or not. */
static QString wherever(const QString &file)
{
    const QFileInfo info(file);
    return info.exists()
               ? info.canonicalFilePath()
               : QDir(QFileInfo(info.absolutePath()).canonicalFilePath()).filePath(info.fileName());
}

/** A recording may be cut in place. */
static output::InputFiles inputsOf(const Options &options)
{
    output::InputFiles inputs = {options.setup.source, options.plugin, options.setup.car.dbc,
                                 options.setup.car.map};
    for (const QString &script : options.scripts)
        inputs.add(script);
    return inputs;
}

/** "drive.jsonl" becomes "drive.module.jsonl". */
static QString moduleFile(const QString &file)
{
    const QFileInfo info(file);
    const QString ending = info.suffix().isEmpty() ? QString() : QLatin1Char('.') + info.suffix();
    return info.dir().filePath(info.completeBaseName() + QStringLiteral(".module") + ending);
}

bool Options::prepareResults(QString *error)
{
    setup.inputs = inputsOf(*this);
    if (setup.hasModuleProcess && !setup.record.isEmpty())
        setup.moduleRecord = moduleFile(setup.record);
    const std::pair<const char *, const QString &> folders[] = {{"gallery", gallery},
                                                                {"report", report}};
    for (const auto &[name, folder] : folders) {
        if (folder.isEmpty() || QDir().mkpath(folder))
            continue;
        *error = notAFolder(QLatin1String(name), folder);
        return false;
    }
    QHash<QString, QString> options;
    const QString page = reportFile();
    const std::pair<const char *, const QString &> files[] = {
        {"record", setup.record},
        {"module-process", setup.moduleRecord},
        {"log-can", setup.live.log},
        {"summary", summary},
        {"junit", junit},
        {"report", page}};
    for (const auto &[name, file] : files) {
        const QString option = QLatin1String(name);
        if (file.isEmpty())
            continue;
        if (!QDir().mkpath(QFileInfo(file).absolutePath()))
            *error = notAFile(option, file);
        else if (const QString other = options.value(wherever(file)); !other.isEmpty())
            *error = QStringLiteral("--%1: expected another file than --%2, got '%3'")
                         .arg(option, other, file);
        else
            *error = output::refusal(file, setup.inputs);
        if (!error->isEmpty())
            return false;
        options.insert(wherever(file), option);
    }
    return true;
}

output::InputFiles Options::filesInUse() const
{
    output::InputFiles files = setup.inputs;
    for (const QString &file :
         {setup.record, setup.moduleRecord, setup.live.log, summary, junit, reportFile()})
        files.add(file);
    return files;
}

QString Options::reportFile() const
{
    return report.isEmpty() ? QString() : QDir(report).filePath(QStringLiteral("report.html"));
}

/** The value of --serve may be left out, which Qt's parser does not know. */
static QStringList withServedBus(QStringList arguments)
{
    return arguments.replaceInStrings(QRegularExpression(QStringLiteral("^--?serve$")),
                                      QStringLiteral("--serve=session"));
}

/** Arguments that Qt can split. */
static bool split(QCommandLineParser *parser, const QStringList &arguments, QString *error)
{
    for (const OptionRow &row : optionRows())
        parser->addOption(toOption(row));
    parser->setSingleDashWordOptionMode(
        QCommandLineParser::ParseAsLongOptions); // as Qt has its own
    if (parser->parse(withServedBus(arguments)))
        return true;
    *error = parser->errorText();
    error->replace(QLatin1Char('\n'), QLatin1Char(' '));
    *error += QStringLiteral(" See --help.");
    return false;
}

bool Options::parse(const QStringList &arguments, QString *error)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("A head unit on a desk: loads the plugin and drives it from a simulated or "
                       "a recorded car."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("The same as --source."),
                                 QStringLiteral("[FILE]"));
    if (!split(&parser, arguments, error))
        return false;
    if (parser.isSet(help))
        text = parser.helpText() + QLatin1String(examples) +
               QStringLiteral("\nKeys in the window:\n") + keysText();
    else if (parser.isSet(version))
        text = QStringLiteral("norda-bench " NORDA_VERSION "\n");
    if (!text.isEmpty())
        return true;
    if (!hasValues(parser, error))
        return false;
    if (!parser.isSet(QStringLiteral("diff")) &&
        !(hasCompanions(parser, error) && readRows(parser, this, error)))
        return false;
    return readFiles(parser, this, error) && fitsSource(parser, setup.source, error) &&
           canServe(*this, error) && canHaveModuleProcess(*this, error);
}
