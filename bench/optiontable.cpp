#include "optiontable.h"

#include "drive.h"
#include "options.h"
#include "recording.h"
#include "translator.h"
#include "unitlanguage.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QStyleFactory>

#include <cmath>
#include <limits>

static QString pagesInWords()
{
    QStringList words;
    for (const Page &page : pages)
        words.append(
            QStringLiteral("%1 %2").arg(page.window).arg(QString::fromLatin1(page.name).toLower()));
    return QStringLiteral("Page to open first: %1. Without it, a recording opens its own.")
        .arg(words.join(QStringLiteral(", ")));
}

/** Whether a folder exists or can be made; nothing is made here. */
static bool canBeMade(const QString &folder)
{
    QFileInfo info(QDir::cleanPath(QFileInfo(folder).absoluteFilePath()));
    while (!info.exists() && !info.isRoot())
        info.setFile(info.absolutePath());
    return info.isDir() && info.isWritable();
}

QString notAFile(const QString &option, const QString &file)
{
    return QStringLiteral("--%1: expected a file that can be written, got '%2'").arg(option, file);
}

QString notAFolder(const QString &option, const QString &folder)
{
    return QStringLiteral("--%1: expected a folder that can be made, got '%2'").arg(option, folder);
}

bool Given::fail(const QString &message) const
{
    *error = message;
    return false;
}

bool Given::failExpecting(const QString &expected) const
{
    return fail(
        QStringLiteral("--%1: expected %2, got '%3'").arg(QLatin1String(option), expected, text()));
}

bool Given::failExpectingNumber(double lowest, double highest, const QString &orElse,
                                const QString &kind) const
{
    static constexpr int digits = 10;
    return failExpecting(QStringLiteral("%1 from %2 to %3%4")
                             .arg(kind, QString::number(lowest, 'g', digits),
                                  QString::number(highest, 'g', digits), orElse));
}

bool Given::isNumber(double lowest, double highest, double *value) const
{
    bool isNumber = false;
    *value = text().toDouble(&isNumber);
    return isNumber && *value >= lowest && *value <= highest;
}

bool Given::readNumber(double lowest, double highest, double *value) const
{
    return isNumber(lowest, highest, value) || failExpectingNumber(lowest, highest);
}

bool Given::readWholeNumber(double lowest, double highest, double *value) const
{
    return (isNumber(lowest, highest, value) && *value == std::floor(*value)) ||
           failExpectingNumber(lowest, highest, {}, QStringLiteral("a whole number"));
}

bool Given::readFile(QString *file) const
{
    *file = text();
    const QFileInfo info(*file);
    return (!file->isEmpty() && !info.isDir() && canBeMade(info.absolutePath())) ||
           fail(notAFile(QLatin1String(option), *file));
}

bool Given::readFolder(QString *folder) const
{
    *folder = text();
    return canBeMade(*folder) || fail(notAFolder(QLatin1String(option), *folder));
}

static bool readSpeed(const Given &given)
{
    given.options->speedGiven = true;
    if (given.text() == QLatin1String("max")) {
        given.options->setup.speed = module::Drive::Unlimited;
        return true;
    }
    return given.isNumber(0.1, 100, &given.options->setup.speed) ||
           given.failExpectingNumber(0.1, 100, QStringLiteral(" or 'max'"));
}

static bool readDuration(const Given &given)
{
    double seconds = 0;
    if (!given.readNumber(0.1, 1e7, &seconds))
        return false;
    given.options->setup.durationMs = qRound64(seconds * 1000);
    return true;
}

static bool readPage(const Given &given)
{
    double page = 0;
    if (!given.readWholeNumber(firstPage, lastPage, &page))
        return false;
    given.options->setup.page = int(page);
    given.options->setup.isPageGiven = true;
    return true;
}

static bool readRecordLimit(const Given &given)
{
    double megabytes = 0;
    if (!given.readNumber(1, 100000, &megabytes))
        return false;
    given.options->setup.recordLimit = qRound64(megabytes * 1e6);
    return true;
}

static bool readCut(const Given &given)
{
    given.options->cut = given.text();
    return !given.options->setup.record.isEmpty() ||
           given.fail(QStringLiteral("--cut: expected --record with the file for the part"));
}

/** In seconds. */
static bool readMoment(const Given &given, qint64 earliestMs, qint64 *ms)
{
    double seconds = 0;
    if (!given.readNumber(double(earliestMs) / 1000, module::longestDriveMs / 1000, &seconds))
        return false;
    *ms = qRound64(seconds * 1000);
    return true;
}

static bool readTrim(const Given &given)
{
    return module::trimFromName(given.text(), &given.options->setup.trim) ||
           given.failExpecting(QStringLiteral("'full', 'no-rear' or 'manual'"));
}

static bool readLanguage(const Given &given)
{
    given.options->setup.language = given.text();
    return Translator::languages().contains(given.text()) ||
           given.failExpecting(UnitLanguage::expected());
}

static bool readFaults(const Given &given)
{
    for (const QString &fault : given.values) {
        if (given.options->setup.faults.add(fault, given.error))
            continue;
        given.error->prepend(QStringLiteral("--fault: "));
        return false;
    }
    return true;
}

static bool readSeed(const Given &given)
{
    double seed = 0;
    if (!given.readWholeNumber(0, std::numeric_limits<quint32>::max(), &seed))
        return false;
    given.options->setup.faults.setSeed(quint32(seed));
    return true;
}

static bool readStyle(const Given &given)
{
    const QStringList styles = QStyleFactory::keys();
    given.options->style = given.text();
    return styles.contains(given.text(), Qt::CaseInsensitive) ||
           given.failExpecting(QStringLiteral("one of %1").arg(styles.join(QStringLiteral(", "))));
}

static bool readTheme(const Given &given)
{
    theme::Mode mode = theme::Mode::Auto;
    if (!theme::modeFromName(given.text(), &mode))
        return given.failExpecting(QStringLiteral("'auto', 'light' or 'dark'"));
    given.options->theme = mode;
    return true;
}

static bool readAsking(const Given &given)
{
    static const QHash<QString, module::Asking> words = {
        {QStringLiteral("never"), module::Asking::Never},
        {QStringLiteral("auto"), module::Asking::Auto},
        {QStringLiteral("always"), module::Asking::Always}};
    given.options->setup.live.asking = words.value(given.text());
    return words.contains(given.text()) ||
           given.failExpecting(QStringLiteral("'never', 'auto' or 'always'"));
}

static bool readRequests(const Given &given)
{
    double requests = 0;
    if (!given.readWholeNumber(1, 50, &requests))
        return false;
    given.options->setup.live.requestsPerSecond = int(requests);
    return true;
}

// Each is read after those above it.
// clang-format off
static const OptionRow rows[] = {
    {"source", "simulator|none|FILE|CAR|MODULE", "simulator",
        "What to drive: \"simulator\", \"none\" for a silent module, an OBD-II CSV export, a candump "
        "log, a recording of the bench, a car that is connected: \"can:PLUGIN:INTERFACE\" with "
        "\"?bitrate=N\" where it is to be set, as in \"can:socketcan:can0\"; "
        "\"elm327:DEVICE\" with \"@BAUD\" where it is not 38400, as in \"elm327:/dev/ttyUSB0\"; or "
        "\"elm327:tcp:HOST:PORT\"; or the vehicle module of another process: \"dbus\" on the session "
        "bus, \"dbus:system\", or \"dbus:ADDRESS\" on the bus with that address.",
        [](const Given &given) { given.options->setup.source = given.text(); return true; }},
    {"serve", "ADDRESS", nullptr,
        "Offer the bench's module on D-Bus, to units in other processes: \"--serve\" on the session bus, "
        "\"--serve=system\", or \"--serve=ADDRESS\" on the bus with that address.",
        [](const Given &given) { given.options->serve = given.text(); return true; }},
    {"dbc", "FILE", nullptr, "The DBC file that explains a car's own frames, of a candump log or a CAN bus; with --map.",
        [](const Given &given) { given.options->setup.car.dbc = given.text(); return true; }},
    {"map", "FILE", nullptr, "The map from the DBC file's signals to quantities, as JSON; with --dbc.",
        [](const Given &given) { given.options->setup.car.map = given.text(); return true; }},
    {"check-map", nullptr, nullptr,
        "List which path of --map reaches which page, and which signals --dbc lacks.",
        [](const Given &given) { given.options->checksMap = true; return true; }},
    {"suggest-map", nullptr, nullptr, "Print a map for the signals of --dbc, as a start.",
        [](const Given &given) { given.options->suggestsMap = true; return true; }},
    {"ask", "never|auto|always", nullptr,
        "Whether a connected car is asked for values: \"auto\", as usual, not while another tester asks, "
        "the engine is off or the car does not answer; \"never\" sends nothing.", readAsking},
    {"requests", "N", nullptr, "The most requests a second to a connected car, 1 to 50; 20 without it.",
        readRequests},
    {"log-can", "FILE", nullptr,
        "Write what a connected car sends and is asked as a candump log, which can be played later.",
        [](const Given &given) { return given.readFile(&given.options->setup.live.log); }},
    {"speed", "X|max", nullptr,
        "Factor of real time, 0.1 to 100, or \"max\" (the default without a display).", readSpeed},
    {"duration", "SECONDS", nullptr, "Stop after this much drive time.", readDuration},
    {"window", "ID", nullptr, pagesInWords(), readPage},
    {"gallery", "DIR", nullptr, "At the end, write a PNG of every page and notable state.",
        [](const Given &given) { return given.readFolder(&given.options->gallery); }},
    {"record", "FILE", nullptr, "Write everything that crosses the adaptor, both ways, as JSON lines.",
        [](const Given &given) { return given.readFile(&given.options->setup.record); }},
    {"record-limit", "MB", "512",
        "Largest size of the recording, 1 to 100000 MB. When half of it is used, the file is renamed "
        "to FILE.1, replacing an older one, and a new part begins.", readRecordLimit},
    {"summary", "FILE", nullptr,
        "At the end, write totals as JSON: drive time, signals, calls, frames, warnings.",
        [](const Given &given) { return given.readFile(&given.options->summary); }},
    {"report", "DIR", nullptr,
        "At the end, write a page to DIR/report.html: curves, pictures along the way, calls, warnings and "
        "faults of the drive, or the steps of the scenarios.",
        [](const Given &given) { return given.readFolder(&given.options->report); }},
    {"script", "FILE|DIR", nullptr,
        "Play a scenario, or all in a folder, and report which expectations fail; may be given several "
        "times. Pictures of failures are written to the folder of --gallery or to scenario-failures.",
        [](const Given &given) { given.options->scripts = given.values; return true; }},
    {"junit", "FILE", nullptr, "Report on the scenarios as JUnit XML as well.",
        [](const Given &given) { return given.readFile(&given.options->junit); }},
    {"check", "FILE.so", nullptr, "Report whether a head unit would accept a plugin, and what to do if not.",
        [](const Given &given) { given.options->check = given.text(); return true; }},
    {"diff", "FILE", nullptr,
        "Compare two recordings, as in --diff FILE FILE: the first difference, and what occurs more often "
        "in one of them.", nullptr},
    {"cut", "FILE", nullptr, "Write a part of a recording to the file given with --record.", readCut},
    {"from", "SECONDS", "0", "Start of the part.",
        [](const Given &given) { return readMoment(given, 0, &given.options->fromMs); }},
    {"to", "SECONDS", nullptr, "End of the part; without it the end of the recording.",
        [](const Given &given) { return readMoment(given, given.options->fromMs, &given.options->toMs); }},
    {"trim", "NAME", "full", "Equipment of the simulated car: \"full\", \"no-rear\" or \"manual\" climate.",
        readTrim},
    {"language", "NAME", nullptr, "Language of the unit: en, de, fr or es; without it the system's.", readLanguage},
    {"fault", "NAME[:X]", nullptr,
        "Inject a fault into what the module sends; may be given several times. \"late-start:5\" and "
        "\"restart:60\" take seconds; \"silence\", \"flood\", \"duplicate\", \"reorder\", \"range\" and "
        "\"truncate\" take the share of the signals that they affect, as in \"silence:0.2\".", readFaults},
    {"module-process", nullptr, nullptr,
        "For developers, with --script or --headless: run the vehicle module in a process of its own, on "
        "a bus of its own. With --record FILE it records, too, to FILE with \".module\" before its ending.",
        [](const Given &given) { given.options->setup.hasModuleProcess = true; return true; }},
    {"seed", "N", "1", "Seed of the faults: the same seed affects the same signals.", readSeed},
    {"headless", nullptr, nullptr, "Run without a window, whatever the display.",
        [](const Given &given) { given.options->headless = true; return true; }},
    {"platform", "NAME", nullptr,
        "Qt platform, for instance \"vnc:port=5901\": a remote view for this machine only, reached "
        "through a tunnel.",
        [](const Given &given) { given.options->platform = given.text(); return true; }},
    {"style", "NAME", "Fusion", "Qt style of the bench's own controls, for instance \"windows\".", readStyle},
    {"theme", "NAME", nullptr,
        "Colours of the bench's own windows: \"light\", \"dark\", or \"auto\" to follow the desktop. "
        "Without it, as chosen last in the window, at first \"auto\".", readTheme},
    {"scale", "X", nullptr,
        "Size of the unit's screen in the window, 0.25 to 4 times 1280 x 720. Without it, it fits the window.",
        [](const Given &given) { return given.readNumber(0.25, 4, &given.options->scale); }},
    {"plugin", "FILE", nullptr, "The plugin to load instead of the one that was built with the bench.",
        [](const Given &given) { given.options->plugin = given.text(); return true; }},
    {"trace", nullptr, nullptr, "Show the plugin's trace output.",
        [](const Given &given) { given.options->trace = true; return true; }},
};
// clang-format on

QVector<OptionRow> optionRows()
{
    return QVector<OptionRow>(std::begin(rows), std::end(rows));
}
