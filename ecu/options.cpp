#include "options.h"

#include "commandline.h"
#include "services.h"

#include <limits>

namespace ecu {

static const char examples[] = R"(
Examples:
  norda-ecu --can socketcan:vcan0                   the simulated car on a CAN bus
  norda-ecu --can virtualcan:tcp://127.0.0.1:35500/can0
                                                    the same without a CAN interface
  norda-ecu --pty /tmp/obd                          an adapter in the car, as a serial device
  norda-ecu --tcp 35000 --source drive.csv          an adapter in a recorded car
  norda-ecu --pty --lose 0.1 --say "CAN ERROR:0.05" one that has a bad day

Exit codes: 0 done, 2 unusable input or arguments.
)";

/** Such as "20:10", from the 20th second for ten seconds. */
static QString readOutage(const QString &text, Outage &outage)
{
    qint64 lengthMs = 0;
    const QStringList parts = text.split(QLatin1Char(':'));
    if (parts.size() != 2 || !commandline::readSeconds(parts[0], &outage.fromMs).isEmpty() ||
        !commandline::readSeconds(parts[1], &lengthMs).isEmpty() || lengthMs == 0)
        return QStringLiteral("the second it begins and its length, such as 20:10");
    outage.toMs = outage.fromMs + lengthMs;
    return {};
}

static QString readBits(const QString &text, Options &options)
{
    options.bus.isExtended = text == QLatin1String("29");
    return text == QLatin1String("11") || text == QLatin1String("29") ? QString()
                                                                      : QStringLiteral("11 or 29");
}

static QString readPids(const QString &text, Options &options)
{
    for (const QString &word : text.split(QLatin1Char(','))) {
        bool isNumber = false;
        const uint pid = word.toUInt(&isNumber, 16);
        if (!isNumber || pid == 0 || pid > 0xFF)
            return QStringLiteral("parameters from 01 to FF, such as 0C,0D");
        options.car.missingPids.insert(quint8(pid));
    }
    return {};
}

static QString readCodes(const QString &text, Options &options)
{
    static constexpr int most = 127; // that their count has bits for
    options.car.faultCodes = text.split(QLatin1Char(','));
    options.car.alwaysHasFault = true;
    for (const QString &code : qAsConst(options.car.faultCodes)) {
        if (troubleCodeBytes(code).isEmpty() || options.car.faultCodes.size() > most)
            return QStringLiteral("at most 127 trouble codes, such as P0304,U0100");
    }
    return {};
}

static QString readBadAnswer(const QString &text, Options &options)
{
    QString expected;
    options.faults.answers.add(text, &expected);
    return expected;
}

static QString readTerminal(const QString &text, Options &options)
{
    options.hasTerminal = true;
    options.link = text;
    return {};
}

static QString badAnswerHelp()
{
    return QStringLiteral("A bad answer of the adapter, with its share of the requests as in \"NO "
                          "DATA:0.1\"; may be given several times. One of: %1.")
        .arg(BadAnswers::names().join(QStringLiteral(", ")));
}

// ---- All options --------------------------------------------------------------------------------

template <typename Target>
static commandline::Reader into(QString (*read)(const QString &, Target &), Target &target)
{
    return [read, &target](const QString &value) { return read(value, target); };
}

// clang-format off
static QVector<commandline::Option> optionRows(Options &options)
{
    using namespace commandline;
    return {
    {"source", "simulator|FILE", "What the car does: \"simulator\" (the default), an OBD-II CSV export or a candump log. After its end it begins again.",
        text(&options.source)},
    {"dbc", "FILE", "The DBC file of the car's own frames, which it sends on --can; with --map.",
        text(&options.files.dbc)},
    {"map", "FILE", "The map from the DBC file's signals to quantities, as JSON, which is read backwards; with --dbc.",
        text(&options.files.map)},
    {"speed", "X", "Factor of real time, 0.1 to 100.", number(0.1, 100, &options.speed)},
    {"duration", "SECONDS", "End after this much drive time.", seconds(&options.durationMs)},
    {"can", "PLUGIN:INTERFACE[?bitrate=N]", "Be a car on a CAN bus, for instance on \"socketcan:can0\".", text(&options.can)},
    {"pty", "[LINK]", "Be an adapter on a pseudo terminal, to which a symbolic link LINK leads.",
        into(readTerminal, options)},
    {"tcp", "PORT", "Be an adapter on a TCP port of the loopback interface; 0 for any that is free.",
        whole(0, 65535, &options.tcpPort)},
    {"bits", "11|29", "Length of the car's diagnostic identifiers; 11 by default.", into(readBits, options)},
    {"units", "N", "Control units that answer, 1 to 8; 1 by default.", whole(1, CarBus::MostUnits, &options.bus.units)},
    {"codes", "CODE[,CODE...]", "Trouble codes that the car stores. By default P0304 while the drive has the lamp on.",
        into(readCodes, options)},
    {"without", "PID[,PID...]", "Parameters that the car does not know, such as 0C,0D.", into(readPids, options)},
    {"delay", "MS", "Time before each of the car's answers, up to 10000.", whole(0, 10000, &options.bus.delayMs)},
    {"lose", "SHARE", "Share of the car's answers that are lost, 0 to 1.", number(0, 1, &options.bus.lost)},
    {"say", "TEXT[:SHARE]", badAnswerHelp(), into(readBadAnswer, options)},
    {"tester", "MS", "A second tester on the bus requests the engine speed so often, 1 to 60000.",
        whole(1, 60000, &options.bus.otherTesterMs)},
    {"silence", "AT:SECONDS", "From this second on nothing is sent or received for so long.",
        into(readOutage, options.faults.silence)},
    {"pull", "AT:SECONDS", "From this second on the cable is pulled for so long: the terminal or port is gone, the bus silent.",
        into(readOutage, options.faults.pulled)},
    {"seed", "N", "Seed of what is lost or bad: the same seed affects the same answers. 1 by default.",
        whole(0, std::numeric_limits<quint32>::max(), &options.bus.seed)},
    };
}
// clang-format on

/** What makes sense together. */
static QString contradiction(const Options &options)
{
    const bool isServed = !options.can.isEmpty() || options.hasTerminal || options.tcpPort >= 0;
    if (!isServed)
        return QStringLiteral("expected --can, --pty or --tcp, see --help");
    if (options.files.dbc.isEmpty() != options.files.map.isEmpty())
        return QStringLiteral("--dbc: expected with --map, got one of them alone");
    if (!options.files.isEmpty() && options.can.isEmpty() &&
        options.source == QLatin1String("simulator"))
        return QStringLiteral("--dbc: expected with --can or a candump log, got neither");
    return {};
}

bool Options::parse(const QStringList &arguments, QString *error)
{
    static constexpr commandline::About about = {
        "norda-ecu",
        "The other end of the cable: a car that answers OBD-II requests on a CAN bus, or an ELM327 "
        "adapter that is plugged into it.",
        examples};
    if (!commandline::readCommandLine(arguments, about, optionRows(*this), &text, error))
        return false;
    faults.answers.setSeed(bus.seed);
    if (text.isEmpty())
        *error = contradiction(*this);
    return error->isEmpty();
}

} // namespace ecu
