#include "options.h"

#include "recording.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStyleFactory>

static const char examples[] = R"(
Examples:
  norda-bench                                  the simulated car, in a window
  norda-bench --source drive.csv --speed 4     a recorded drive, four times as fast
  norda-bench --headless --speed max --gallery out --summary out/s.json
                                               a whole drive without a display
  norda-bench --source raw.log --dbc car.dbc --map car.json
                                               a car's own frames
  norda-bench --record session.jsonl           keep all that crosses the adaptor
  norda-bench --source session.jsonl           and play it again
  norda-bench --script bench/scenario/library         play all scenarios that ship
  norda-bench --check libmyplugin.so           would a head unit accept it?
  norda-bench --fault silence:0.3 --fault truncate --seed 7
                                               a module that misbehaves
  norda-bench --platform vnc:port=5901         shown to a VNC viewer on this machine
  norda-bench --diff good.jsonl bad.jsonl      where two recordings part
  norda-bench --cut session.jsonl --from 90 --to 120 --record part.jsonl
                                               half a minute of one

Keys: 1, 2, 3 and so on open the pages, Esc goes back, Space plays and pauses.
Exit codes: 0 done, 1 an expectation failed or recordings differ, 2 unusable input or arguments.
)";

static QString pagesInWords()
{
    QStringList words;
    for (const Page &page : pages)
        words.append(
            QStringLiteral("%1 %2").arg(page.window).arg(QString::fromLatin1(page.name).toLower()));
    return QStringLiteral("Page to open first: %1. Without it, a recording opens its own.")
        .arg(words.join(QStringLiteral(", ")));
}

// clang-format off
static const QList<QCommandLineOption> known = {
    {"source", "What to drive: \"simulator\", \"none\" for a silent module, an OBD-II CSV export, a candump log or a recording "
               "of the bench.", "simulator|none|FILE", "simulator"},
    {"dbc", "The DBC file of the car whose raw CAN log (candump) is driven; with --map.", "FILE"},
    {"map", "The map from the DBC file's signals to paths, as JSON; with --dbc.", "FILE"},
    {"check-map", "Tell which path of --map reaches which page, and which signals --dbc lacks."},
    {"suggest-map", "Write a map for the signals of --dbc to standard output, as a start."},
    {"speed", "Factor of real time, 0.1 to 100, or \"max\" (the default without a display).",
              "X|max", "1"},
    {"duration", "Stop after that much drive time.", "SECONDS"},
    {"window", pagesInWords(), QStringLiteral("%1..%2").arg(firstPage).arg(lastPage),
               QString::number(firstPage)},
    {"gallery", "At the end, write a PNG of every page and notable state.", "DIR"},
    {"record", "Write everything that crosses the adaptor, both ways, as JSON lines.", "FILE"},
    {"record-limit", "What the recording may take, 1 to 100000 MB. When half of it is full, the file "
                     "becomes FILE.1 in place of an older one, and a new part begins.", "MB", "512"},
    {"summary", "At the end, write totals as JSON: drive time, signals, calls, frames, warnings.",
                "FILE"},
    {"script", "Play a scenario, or all of a folder, and tell which expectations fail; may be given "
               "several times. Pictures of failures go to the folder of --gallery or to "
               "scenario-failures.", "FILE|DIR"},
    {"junit", "Report on the scenarios in JUnit's XML as well.", "FILE"},
    {"check", "Tell whether a head unit would accept a plugin, and what to do if not.", "FILE.so"},
    {"diff", "Compare a recording with the one named behind it: where they part, and what occurs "
             "more often in one of them.", "FILE"},
    {"cut", "Write a part of a recording to the file named with --record.", "FILE"},
    {"from", "Where the part begins.", "SECONDS", "0"},
    {"to", "Where the part ends; without it the recording's end.", "SECONDS"},
    {"trim", "What the simulated car is equipped with: \"full\", \"no-rear\" or \"manual\" climate.",
             "NAME", "full"},
    {"fault", "Let the module misbehave; may be given several times. \"late-start:5\" and "
              "\"restart:60\" take seconds; \"silence\", \"flood\", \"duplicate\", \"reorder\", "
              "\"range\" and \"truncate\" the part of the signals that they spoil, as in "
              "\"silence:0.2\".", "NAME[:X]"},
    {"seed", "What the faults are drawn from: the same seed spoils the same signals.", "N", "1"},
    {"headless", "Run without a window, whatever the display."},
    {"platform", "What Qt draws on, for instance \"vnc:port=5901\": a remote view for this machine "
                 "only, to be reached through a tunnel.", "NAME"},
    {"style", "What Qt draws the bench's own controls with, for instance \"windows\".", "NAME", "Fusion"},
    {"scale", "Size of the 1280 x 720 screen on a desktop, 0.25 to 4.", "X", "1"},
    {"plugin", "The plugin to load instead of the one that was built with the bench.", "FILE"},
    {"trace", "Let the plugin's trace lines through."},
};
// clang-format on

static bool number(const QCommandLineParser &parser, const char *option, double lowest,
                   double highest, double *value, QString *error)
{
    const QString text = parser.value(QLatin1String(option));
    bool isNumber = false;
    const double parsed = text.toDouble(&isNumber);
    if (isNumber && parsed >= lowest && parsed <= highest) {
        *value = parsed;
        return true;
    }
    *error = QStringLiteral("--%1: expected a number from %2 to %3, got '%4'")
                 .arg(QLatin1String(option))
                 .arg(lowest)
                 .arg(highest)
                 .arg(text);
    return false;
}

/** Whether a folder exists or all that lacks of it can be made; nothing is made here. */
static bool canBeMade(const QString &folder)
{
    QFileInfo info(QDir::cleanPath(QFileInfo(folder).absoluteFilePath()));
    while (!info.exists() && !info.isRoot())
        info.setFile(info.absolutePath());
    return info.isDir() && info.isWritable();
}

static QString notAFile(const QString &option, const QString &file)
{
    return QStringLiteral("--%1: expected a file that can be written, got '%2'").arg(option, file);
}

static QString notAFolder(const QString &folder)
{
    return QStringLiteral("--gallery: expected a folder that can be made, got '%1'").arg(folder);
}

static bool writable(const QString &option, const QString &file, QString *error)
{
    const QFileInfo info(file);
    if (!file.isEmpty() && !info.isDir() && canBeMade(info.absolutePath()))
        return true;
    *error = notAFile(option, file);
    return false;
}

static bool readFaults(const QCommandLineParser &parser, module::Faults *faults, QString *error)
{
    double seed = 1;
    if (!number(parser, "seed", 0, 4294967295.0, &seed, error))
        return false;
    *faults = module::Faults(quint32(seed));
    const QStringList wanted = parser.values(QStringLiteral("fault"));
    for (const QString &fault : wanted) {
        if (faults->add(fault, error))
            continue;
        error->prepend(QStringLiteral("--fault: "));
        return false;
    }
    return true;
}

/** The range of a recording to cut out, in seconds. */
static bool readPart(const QCommandLineParser &parser, Options *options, QString *error)
{
    static constexpr double longest = module::longestDriveMs / 1000.0;
    double from = 0;
    double to = longest;
    if (!number(parser, "from", 0, longest, &from, error) ||
        (parser.isSet(QStringLiteral("to")) && !number(parser, "to", from, longest, &to, error)))
        return false;
    if (options->setup.record.isEmpty()) {
        *error = QStringLiteral("--cut: expected --record with the file for the part");
        return false;
    }
    options->fromMs = qRound64(from * 1000);
    options->toMs = qRound64(to * 1000);
    return true;
}

/** An option that says more about another means nothing without it. */
static bool hasCompanions(const QCommandLineParser &parser, QString *error)
{
    static constexpr const char *companions[][2] = {
        {"from", "cut"}, {"to", "cut"}, {"record-limit", "record"}, {"junit", "script"}};
    for (const auto &[option, other] : companions) {
        if (!parser.isSet(QLatin1String(option)) || parser.isSet(QLatin1String(other)))
            continue;
        *error = QStringLiteral("--%1: expected with --%2, got it alone")
                     .arg(QLatin1String(option), QLatin1String(other));
        return false;
    }
    return true;
}

/** A DBC file alone is enough to suggest a map. */
static bool readCar(const QCommandLineParser &parser, Options *options, QString *error)
{
    options->setup.car = {parser.value(QStringLiteral("dbc")), parser.value(QStringLiteral("map"))};
    options->checksMap = parser.isSet(QStringLiteral("check-map"));
    options->suggestsMap = parser.isSet(QStringLiteral("suggest-map"));
    const bool isUsed = options->checksMap || !options->setup.car.isEmpty();
    const bool needsMap = isUsed && !options->suggestsMap;
    if (!options->setup.car.dbc.isEmpty() && (!needsMap || !options->setup.car.map.isEmpty()))
        return true;
    if (!isUsed && !options->suggestsMap)
        return true;
    *error = options->suggestsMap ? QStringLiteral("--suggest-map: expected with --dbc")
                                  : QStringLiteral("--dbc, --map: expected both, got one of them");
    return false;
}

bool Options::makeFolders(QString *error) const
{
    if (!gallery.isEmpty() && !QDir().mkpath(gallery)) {
        *error = notAFolder(gallery);
        return false;
    }
    const std::pair<const char *, const QString &> files[] = {
        {"record", setup.record}, {"summary", summary}, {"junit", junit}};
    for (const auto &[option, file] : files) {
        if (file.isEmpty() || QDir().mkpath(QFileInfo(file).absolutePath()))
            continue;
        *error = notAFile(QLatin1String(option), file);
        return false;
    }
    return true;
}

bool Options::parse(const QStringList &arguments, QString *error)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A head unit on a desk: loads the plugin and "
                                                    "drives it from a simulated or a recorded "
                                                    "car."));
    parser.addOptions(known);
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions); // as Qt has its own
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    if (!parser.parse(arguments)) {
        *error = parser.errorText();
        error->replace(QLatin1Char('\n'), QLatin1Char(' '));
        *error += QStringLiteral(" See --help.");
        return false;
    }
    if (parser.isSet(help)) {
        text = parser.helpText() + QLatin1String(examples);
        return true;
    }
    if (parser.isSet(version)) {
        text = QStringLiteral("norda-bench " NORDA_VERSION "\n");
        return true;
    }
    diff = parser.values(QStringLiteral("diff")) + parser.positionalArguments();
    if (parser.isSet(QStringLiteral("diff"))) {
        if (diff.size() == 2)
            return true;
        *error = QStringLiteral("--diff: expected two recordings, got %1").arg(diff.size());
        return false;
    }
    if (!parser.positionalArguments().isEmpty()) {
        *error = QStringLiteral("%1: expected an option; a drive is named with --source")
                     .arg(parser.positionalArguments().constFirst());
        return false;
    }

    if (!hasCompanions(parser, error) || !readCar(parser, this, error))
        return false;
    platform = parser.value(QStringLiteral("platform"));
    check = parser.value(QStringLiteral("check"));
    style = parser.value(QStringLiteral("style"));
    if (!QStyleFactory::keys().contains(style, Qt::CaseInsensitive)) {
        *error = QStringLiteral("--style: expected one of %1, got '%2'")
                     .arg(QStyleFactory::keys().join(QStringLiteral(", ")), style);
        return false;
    }
    headless = parser.isSet(QStringLiteral("headless"));
    trace = parser.isSet(QStringLiteral("trace"));
    setup.source = parser.value(QStringLiteral("source"));
    plugin = parser.value(QStringLiteral("plugin"));
    speedGiven = parser.isSet(QStringLiteral("speed"));
    if (parser.value(QStringLiteral("speed")) == QLatin1String("max"))
        setup.speed = 0;
    else if (!number(parser, "speed", 0.1, 100, &setup.speed, error)) {
        error->replace(QStringLiteral(", got"), QStringLiteral(" or 'max', got"));
        return false;
    }
    double seconds = -0.001;
    if (parser.isSet(QStringLiteral("duration")) &&
        !number(parser, "duration", 0.1, 1e7, &seconds, error))
        return false;
    setup.durationMs = qRound64(seconds * 1000);
    double page = firstPage;
    if (!number(parser, "window", firstPage, lastPage, &page, error) ||
        !number(parser, "scale", 0.25, 4, &scale, error))
        return false;
    setup.page = int(page);
    setup.isPageGiven = parser.isSet(QStringLiteral("window"));

    if (!module::trimFromName(parser.value(QStringLiteral("trim")), &setup.trim)) {
        *error = QStringLiteral("--trim: expected 'full', 'no-rear' or 'manual', got '%1'")
                     .arg(parser.value(QStringLiteral("trim")));
        return false;
    }

    if (!readFaults(parser, &setup.faults, error))
        return false;

    gallery = parser.value(QStringLiteral("gallery"));
    setup.record = parser.value(QStringLiteral("record"));
    double megabytes = 0;
    if (!number(parser, "record-limit", 1, 100000, &megabytes, error))
        return false;
    setup.recordLimit = qRound64(megabytes * 1e6);
    summary = parser.value(QStringLiteral("summary"));
    scripts = parser.values(QStringLiteral("script"));
    junit = parser.value(QStringLiteral("junit"));
    for (const char *file : {"record", "summary", "junit"}) {
        const QString name = QLatin1String(file);
        if (parser.isSet(name) && !writable(name, parser.value(name), error))
            return false;
    }
    cut = parser.value(QStringLiteral("cut"));
    if (!cut.isEmpty() && !readPart(parser, this, error))
        return false;
    if (!gallery.isEmpty() && !canBeMade(gallery)) {
        *error = notAFolder(gallery);
        return false;
    }
    return true;
}
