// A busy bus on the pages: a raw CAN log of 4,000 frames a second that carries every quantity,
// decoded, mapped, delivered and painted, with all six pages built and bound and one of them open.
// The time is what a second of the drive takes of one core.

#include "counters.h"
#include "quantities.h"
#include "session/rig.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

static constexpr int framesPerSecond = 4000;
static constexpr int driveSeconds = 12;
static constexpr int signalsPerFrame = 8;
static constexpr int messages = 32;
static constexpr int firstId = 0x100;
static constexpr int quantities = int(module::Quantity::Count);

static void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

/** A byte for each signal; 0 to 255 are the range of its quantity. */
static QByteArray dbc()
{
    QString text;
    for (int i = 0; i < messages * signalsPerFrame; ++i) {
        const int place = i % signalsPerFrame;
        if (place == 0)
            text += QStringLiteral("BO_ %1 M%1: 8 U\n").arg(firstId + i / signalsPerFrame);
        const module::QuantityInfo &info = module::quantityInfo(module::Quantity(i % quantities));
        text += QStringLiteral(" SG_ S%1 : %2|8@1+ (%3,%4) [0|0] \"\" U\n")
                    .arg(i)
                    .arg(8 * place)
                    .arg((info.highest - info.lowest) / 255, 0, 'g', 12)
                    .arg(info.lowest);
    }
    return text.toLatin1();
}

static QByteArray map()
{
    QStringList entries;
    for (int i = 0; i < quantities; ++i)
        entries.append(QStringLiteral("\"%1\": {\"dbc2vss\": {\"signal\": \"S%2\", "
                                      "\"interval_ms\": %3}}")
                           .arg(QLatin1String(module::quantityInfo(module::Quantity(i)).path))
                           .arg(i)
                           .arg(i == 0 ? 20 : 100)); // the engine speed comes most often
    return "{" + entries.join(QLatin1Char(',')).toLatin1() + "}";
}

/** Each signal goes through its range in some seconds, each at another pace. */
static QByteArray log()
{
    QByteArray lines;
    for (int frame = 0; frame < framesPerSecond * driveSeconds; ++frame) {
        QByteArray data;
        for (int i = 0; i < signalsPerFrame; ++i)
            data.append(char(frame / (messages + 16 * (frame + i) % 5) + 31 * i));
        lines += QStringLiteral("(%1) can0 %2#%3\n")
                     .arg(double(frame) / framesPerSecond, 0, 'f', 6)
                     .arg(firstId + frame % messages, 3, 16)
                     .arg(QLatin1String(data.toHex()))
                     .toLatin1();
    }
    return lines;
}

static Setup setupIn(const QDir &folder)
{
    Setup setup;
    setup.source = folder.filePath(QStringLiteral("raw.log"));
    setup.car = {folder.filePath(QStringLiteral("car.dbc")),
                 folder.filePath(QStringLiteral("car.json"))};
    write(setup.source, log());
    write(setup.car.dbc, dbc());
    write(setup.car.map, map());
    return setup;
}

/** The processor's time for each second of the drive: its log is read whole. */
static double reading(const Setup &setup)
{
    QString error;
    const double before = processorSeconds();
    if (!module::openSource(setup.source, &error, setup.trim, setup.car))
        qFatal("%s", qPrintable(error));
    return (processorSeconds() - before) / driveSeconds;
}

static void busyBus(benchmark::State &state, PageId page)
{
    static constexpr int measuredSeconds = 5;
    const QTemporaryDir folder;
    const Setup setup = setupIn(QDir(folder.path()));
    const double read = reading(setup);
    Rig rig(setup);
    QString error;
    if (!rig.open(QStringLiteral(NORDA_PLUGIN_FILE), &error))
        qFatal("%s", qPrintable(error));
    rig.unit()->screen()->show();
    rig.begin(Replay::Beginning);
    for (const Page &each : pages)
        rig.unit()->windows()->openWindow(each.window);
    rig.unit()->windows()->openWindow(page);
    rig.session()->drive()->play();
    settle(1000);

    const EventCounter events;
    const int signalsBefore = rig.session()->signalCount();
    const double before = processorSeconds();
    settle(measuredSeconds * 1000);
    const double played = (processorSeconds() - before) / measuredSeconds;
    for (auto _ : state)
        state.SetIterationTime(read + played);
    state.counters["read_percent"] = 100 * read;
    state.counters["play_percent"] = 100 * played;
    state.counters["signals_per_s"] =
        double(rig.session()->signalCount() - signalsBefore) / measuredSeconds;
    state.counters["paints_per_s"] = double(events.paints) / measuredSeconds;
}

static void addRow(const char *name, PageId page)
{
    benchmark::RegisterBenchmark(name, busyBus, page)
        ->UseManualTime()
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
}

static const bool areAdded = [] {
    addRow("rawcan/gauges", GaugesPage);
    addRow("rawcan/vehicle", VehiclePage);
    addRow("rawcan/climate", ClimatePage);
    addRow("rawcan/parking", ParkingPage);
    return true;
}();
