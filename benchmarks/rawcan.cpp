// A busy bus on the pages: a raw CAN log of 4,000 frames a second that carries every quantity,
// decoded, mapped, delivered and painted, with all six pages built and bound and one of them open.
// The time is what a second of the drive takes of one core.

#include "busycar.h"
#include "counters.h"
#include "live/canlog.h"
#include "session/rig.h"

#include <QDir>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

static constexpr int driveSeconds = 12;

static QByteArray log()
{
    QByteArray lines;
    for (int number = 0; number < busycar::framesPerSecond * driveSeconds; ++number)
        lines += module::candumpLine(qint64(number) * 1000000 / busycar::framesPerSecond,
                                     busycar::frame(number));
    return lines;
}

static Setup setupIn(const QDir &folder)
{
    Setup setup;
    setup.source = folder.filePath(QStringLiteral("raw.log"));
    setup.car = busycar::filesIn(folder);
    busycar::write(setup.source, log());
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
