#include "options.h"

#include "commandline.h"
#include "live/liveports.h"

#include <QFileInfo>
#include <QHash>

#include <limits>

namespace moduled {

static const char examples[] = R"(
Examples:
  norda-moduled --session                           the simulated car, for the units on a desk
  norda-moduled --source elm327:/dev/ttyUSB0        the car that is plugged in, for all of the system
  norda-moduled --session --source drive.csv        a recorded drive, again and again
  norda-moduled --source can:socketcan:can0 --dbc car.dbc --map car.json
                                                    a car's own frames
  NORDA_MODULE_BUS=session norda-unit               a unit that connects to it

A car that is not there is waited for, a bus that is gone as well. It runs until it is interrupted.

Exit codes: 0 done, 2 unusable input or arguments, or a bus that does not give it its name.
)";

// ---- Values -------------------------------------------------------------------------------------

/** Which options were given that exclude others. */
struct Given
{
    QStringList buses;
    QStringList forCars; // that are connected
};

static QString readTrim(const QString &text, module::Trim *trim)
{
    return module::trimFromName(text, trim) ? QString()
                                            : QStringLiteral("'full', 'no-rear' or 'manual'");
}

static QString readAsking(const QString &text, module::Asking *asking)
{
    static const QHash<QString, module::Asking> words = {
        {QStringLiteral("never"), module::Asking::Never},
        {QStringLiteral("auto"), module::Asking::Auto},
        {QStringLiteral("always"), module::Asking::Always}};
    *asking = words.value(text);
    return words.contains(text) ? QString() : QStringLiteral("'never', 'auto' or 'always'");
}

static QString readFile(const QString &text, QString *file)
{
    const QFileInfo folder(QFileInfo(text).absolutePath());
    *file = text;
    return folder.isDir() && folder.isWritable() ? QString()
                                                 : QStringLiteral("a file that can be written");
}

/** Its message has the value as well, which is added to all. */
static QString readFault(const QString &text, module::Faults *faults)
{
    QString error;
    faults->add(text, &error);
    return error.remove(QStringLiteral("expected ")).section(QStringLiteral(", got '"), 0, 0);
}

template <typename Target>
static commandline::Reader into(QString (*read)(const QString &, Target *), Target *target)
{
    return [read, target](const QString &value) { return read(value, target); };
}

/** Notes that the option was given. */
static commandline::Reader noted(const char *name, QStringList *given,
                                 const commandline::Reader &read)
{
    return [name, given, read](const QString &value) {
        given->append(QLatin1String(name));
        return read(value);
    };
}

/** A bus that has a name is its own option. */
static commandline::Reader busNamed(const char *name, Options *options, Given *given)
{
    return noted(name, &given->buses, [name, options](const QString & /*none*/) {
        options->bus = QLatin1String(name);
        return QString();
    });
}

// ---- All options --------------------------------------------------------------------------------

// clang-format off
static QVector<commandline::Option> optionRows(Options *options, Given *given)
{
    using namespace commandline;
    return {
    {"session", nullptr, "Serve the programs of this login session, as on a desk.",
        busNamed("session", options, given)},
    {"system", nullptr, "Serve the whole system, as in a car. This is the default.",
        busNamed("system", options, given)},
    {"bus", "ADDRESS", "Serve on another bus, such as unix:path=/run/user/1000/bus.",
        noted("bus", &given->buses, text(&options->bus))},
    {"source", "simulator|none|FILE|CAR",
        "What the car does: \"simulator\" (the default), \"none\" for a silent module, an OBD-II CSV export, a candump "
        "log, a recording of the bench, or a car that is connected: \"can:PLUGIN:INTERFACE\" with \"?bitrate=N\" "
        "where it is to be set, \"elm327:DEVICE\" with \"@BAUD\" where it is not 38400, or \"elm327:tcp:HOST:PORT\". "
        "After its end a recorded drive begins again.", text(&options->source)},
    {"trim", "NAME", "Equipment of the simulated car: \"full\" (the default), \"no-rear\" or \"manual\" climate.",
        into(readTrim, &options->trim)},
    {"dbc", "FILE", "The DBC file that explains a car's own frames, of a candump log or a CAN bus; with --map.",
        text(&options->car.dbc)},
    {"map", "FILE", "The map from the DBC file's signals to quantities, as JSON; with --dbc.", text(&options->car.map)},
    {"ask", "never|auto|always",
        "Whether a connected car is asked for values: \"auto\", as usual, not while another tester asks, the engine is "
        "off or the car does not answer; \"never\" sends nothing.",
        noted("ask", &given->forCars, into(readAsking, &options->live.asking))},
    {"requests", "N", "The most requests a second to a connected car, 1 to 50; 20 without it.",
        noted("requests", &given->forCars, whole(1, 50, &options->live.requestsPerSecond))},
    {"log-can", "FILE", "Write what a connected car sends and is asked as a candump log, which can be played later.",
        noted("log-can", &given->forCars, into(readFile, &options->live.log))},
    {"speed", "X", "Factor of real time, 0.1 to 100; not for a connected car.", number(0.1, 100, &options->speed)},
    {"fault", "NAME[:X]",
        "Inject a fault into what the module sends; may be given several times. \"late-start:5\" and \"restart:60\" take "
        "seconds; \"silence\", \"flood\", \"duplicate\", \"reorder\", \"range\" and \"truncate\" take the share of the "
        "signals that they affect, as in \"silence:0.2\".", into(readFault, &options->faults)},
    {"seed", "N", "Seed of the faults: the same seed affects the same signals. 1 by default.",
        [options](const QString &value) {
            double seed = 0;
            QString expected = readWhole(value, 0, std::numeric_limits<quint32>::max(), &seed);
            options->faults.setSeed(quint32(seed));
            return expected;
        }},
    {"relay", nullptr, "Send what other programs emit in place of the module, such as \"busctl --user emit\"; for a desk.",
        flag(&options->relays)},
    {"print-interface", nullptr, "Print the interface on D-Bus as XML, and exit.", flag(&options->printsInterface)},
    };
}
// clang-format on

/** What makes sense together. */
static QString contradiction(const Options &options, const Given &given)
{
    if (given.buses.size() > 1)
        return QStringLiteral("--%1: expected one bus, got --%2 as well")
            .arg(given.buses[1], given.buses[0]);
    if (!given.forCars.isEmpty() && !module::isLiveName(options.source))
        return QStringLiteral("--%1: expected with a car that is connected, got '%2'")
            .arg(given.forCars[0], options.source);
    const bool isFile =
        options.source != QLatin1String("simulator") && options.source != QLatin1String("none");
    if (!options.car.isEmpty() && !isFile)
        return QStringLiteral("--dbc: expected with a candump log or a CAN bus, got '%1'")
            .arg(options.source);
    return {};
}

bool Options::parse(const QStringList &arguments, QString *error)
{
    static constexpr commandline::About about = {"norda-moduled",
                                                 "The vehicle module as a service: its signals and "
                                                 "commands on D-Bus, for head units and the "
                                                 "bench.",
                                                 examples};
    Given given;
    if (!commandline::readCommandLine(arguments, about, optionRows(this, &given), &text, error))
        return false;
    if (text.isEmpty())
        *error = contradiction(*this, given);
    live.waitsForCar = true;
    live.inputs = {source, car.dbc, car.map};
    return error->isEmpty();
}

} // namespace moduled
