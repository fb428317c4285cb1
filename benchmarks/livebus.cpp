// A car that is connected, on a full bus: 4,000 frames a second carry every quantity from another
// process, and are decoded, mapped, delivered and painted with all six pages built and bound and
// one of them open. The time of a page is what a second takes of one core, that of a needle what
// passes from the first frame with a new engine speed to the first painted frame in which the
// needle moves there. Against a process that only counts the frames, and a gauge alone.

#include "bussender.h"
#include "busycar.h"
#include "counters.h"
#include "norda/squillogauge.h"
#include "session/rig.h"

#include <QCanBus>
#include <QCanBusDevice>
#include <QDir>
#include <QElapsedTimer>
#include <QEvent>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>

static const QString busPlugin = QStringLiteral("virtualcan");
static constexpr int pageSeconds = 8;
static constexpr int needleSeconds = 40;

// ---- What is measured ---------------------------------------------------------------------------

/** What a needle shows in each frame that is painted. */
class NeedleWatch : public QObject
{
public:
    struct Painted
    {
        qint64 ns;
        double value;
    };

    explicit NeedleWatch(norda::SQuilloGauge *gauge) : m_gauge(gauge)
    {
        gauge->installEventFilter(this);
    }
    const QVector<Painted> &painted() const { return m_painted; }

private:
    /** The frame is on the screen when its window has painted everything. */
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            const double value = m_gauge->shownValue();
            QMetaObject::invokeMethod(
                this,
                [this, value] {
                    m_painted.append({monotonicNs(), value});
                },
                Qt::QueuedConnection);
        }
        return false;
    }

    norda::SQuilloGauge *m_gauge;
    QVector<Painted> m_painted;
};

/** In milliseconds. Each step turns the needle around, or sets off one that rests. */
static QVector<double> sortedLatencies(const QVector<BusSender::Step> &steps,
                                       const QVector<NeedleWatch::Painted> &painted)
{
    static constexpr double nsPerMs = 1e6;
    QVector<double> latencies;
    int frame = 1;
    for (const BusSender::Step &step : steps) {
        const auto isMoving = [&](int index) {
            const double moved = painted.at(index).value - painted.at(index - 1).value;
            return painted.at(index).ns > step.ns && (step.isUp ? moved > 0 : moved < 0);
        };
        while (frame < painted.size() && !isMoving(frame))
            ++frame;
        if (frame < painted.size())
            latencies.append(double(painted.at(frame).ns - step.ns) / nsPerMs);
    }
    std::sort(latencies.begin(), latencies.end());
    return latencies;
}

struct Measured
{
    double coreShare = 0;
    qint64 lost = 0;
    BusSender::Report sent;
};

/** @param seen  how many frames have come */
template <typename Seen>
static Measured measure(benchmark::State &state, BusSender *sender, int seconds, Seen seen)
{
    static constexpr int longestWait = 50;
    sender->start(seconds + 2);
    settle(1000);
    const double before = processorSeconds();
    settle(seconds * 1000);
    Measured measured;
    measured.coreShare = (processorSeconds() - before) / seconds;
    measured.sent = sender->finish().value_or(BusSender::Report());
    for (int i = 0; i < longestWait && seen() < measured.sent.frames; ++i)
        settle(100);
    measured.lost = measured.sent.frames - seen();
    state.counters["core_percent"] = 100 * measured.coreShare;
    state.counters["frames_lost"] = double(measured.lost);
    state.counters["frames_per_s"] = double(measured.sent.frames) / measured.sent.seconds;
    if (measured.sent.frames == 0 || measured.lost != 0)
        state.SkipWithError("frames were lost");
    return measured;
}

static void reportLatency(benchmark::State &state, const Measured &measured,
                          const NeedleWatch &watch)
{
    static constexpr double nearlyAll = 0.99;
    const QVector<double> latencies = sortedLatencies(measured.sent.steps, watch.painted());
    const bool isComplete = latencies.size() >= measured.sent.steps.size() - 1; // without the last
    if (latencies.isEmpty() || !isComplete) {
        state.SkipWithError("the needle did not follow");
        return;
    }
    for (auto _ : state)
        state.SetIterationTime(latencies.at(latencies.size() / 2) / 1000);
    state.counters["p99_ms"] = latencies.at(int(nearlyAll * latencies.size()));
    state.counters["longest_ms"] = latencies.constLast();
    state.counters["steps"] = latencies.size();
}

// ---- The unit -----------------------------------------------------------------------------------

/** All pages of a unit that listens to a bus. */
class ListeningUnit
{
public:
    ListeningUnit(const QString &interface, PageId page) : m_rig(setup(interface))
    {
        QString error;
        if (!m_rig.open(QStringLiteral(NORDA_PLUGIN_FILE), &error))
            qFatal("%s", qPrintable(error));
        m_rig.unit()->screen()->show();
        m_rig.begin(Replay::Beginning);
        for (const Page &each : pages)
            m_rig.unit()->windows()->openWindow(each.window);
        m_rig.unit()->windows()->openWindow(page);
        m_rig.session()->drive()->play();
        settle(1000);
    }

    qint64 frames()
    {
        const auto *source = m_rig.session()->drive()->source();
        return qint64(source->statistics().value(QLatin1String("frames")).toDouble());
    }

    norda::SQuilloGauge *tachometer()
    {
        const auto gauges = m_rig.unit()->screen()->findChildren<norda::SQuilloGauge *>();
        return *std::max_element(gauges.cbegin(), gauges.cend(), [](auto *left, auto *right) {
            return left->width() < right->width();
        });
    }

private:
    Setup setup(const QString &interface) const
    {
        Setup setup;
        setup.source = QStringLiteral("can:%1:%2").arg(busPlugin, interface);
        setup.car = busycar::filesIn(QDir(m_folder.path()));
        setup.live.asking = module::Asking::Never;
        return setup;
    }

    QTemporaryDir m_folder;
    Rig m_rig;
};

// ---- The baseline -------------------------------------------------------------------------------

/** Counts the frames of a bus, and shows its engine speed on a gauge, as often as the map would. */
class BareListener
{
public:
    explicit BareListener(const QString &interface)
        : m_bus(QCanBus::instance()->createDevice(busPlugin, interface))
    {
        QObject::connect(m_bus.get(), &QCanBusDevice::framesReceived, m_bus.get(),
                         [this] { read(); });
        if (!m_bus->connectDevice())
            qFatal("no bus on %s", qPrintable(interface));
        m_clock.start();
        m_gauge.resize(370, 370);
        m_gauge.setPointerXY(186, 186);
        m_gauge.setRotationRange(-180, 90);
        m_gauge.setImageDir(QStringLiteral(":/icon/gaugesicon/gagus_pointer_large.png"));
    }

    qint64 frames() const { return m_frames; }
    norda::SQuilloGauge *gauge() { return &m_gauge; }

private:
    void read()
    {
        const QVector<QCanBusFrame> frames = m_bus->readAllFrames();
        m_frames += frames.size();
        for (const QCanBusFrame &frame : frames) {
            const bool isTaken = frame.frameId() == busycar::engineId &&
                                 m_clock.hasExpired(busycar::engineIntervalMs);
            if (!isTaken)
                continue;
            m_clock.start();
            m_gauge._setAnimationValue(quint8(frame.payload().at(0)));
        }
    }

    std::unique_ptr<QCanBusDevice> m_bus;
    norda::SQuilloGauge m_gauge;
    QElapsedTimer m_clock; // since the last value for the gauge
    qint64 m_frames = 0;
};

// ---- The rows -----------------------------------------------------------------------------------

/** A page, right after what only counts the frames: both meet the same load. */
static void openPage(benchmark::State &state, PageId page)
{
    BusSender sender;
    const double bare = [&] {
        const BareListener listener(sender.interface());
        settle(1000);
        return measure(state, &sender, pageSeconds, [&] { return listener.frames(); }).coreShare;
    }();
    ListeningUnit unit(sender.interface(), page);
    const double core =
        measure(state, &sender, pageSeconds, [&] { return unit.frames(); }).coreShare;
    for (auto _ : state)
        state.SetIterationTime(core);
    state.counters["ratio"] = core / bare;
}

static void needle(benchmark::State &state)
{
    BusSender sender;
    ListeningUnit unit(sender.interface(), GaugesPage);
    const NeedleWatch watch(unit.tachometer());
    const Measured measured =
        measure(state, &sender, needleSeconds, [&unit] { return unit.frames(); });
    reportLatency(state, measured, watch);
}

static void bareNeedle(benchmark::State &state)
{
    BusSender sender;
    BareListener listener(sender.interface());
    listener.gauge()->show();
    settle(1000);
    const NeedleWatch watch(listener.gauge());
    const Measured measured =
        measure(state, &sender, needleSeconds, [&listener] { return listener.frames(); });
    reportLatency(state, measured, watch);
}

template <typename Function, typename... Arguments>
static void addRow(const char *name, Function function, Arguments... arguments)
{
    benchmark::RegisterBenchmark(name, function, arguments...)
        ->UseManualTime()
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
}

static const bool areAdded = [] {
    addRow("livebus/gauges", openPage, GaugesPage);
    addRow("livebus/vehicle", openPage, VehiclePage);
    addRow("livebus/climate", openPage, ClimatePage);
    addRow("livebus/parking", openPage, ParkingPage);
    addRow("livebus/settings", openPage, SettingsPage);
    addRow("livebus/about", openPage, AboutPage);
    addRow("livebus/needle", needle);
    addRow("livebus/bare_needle", bareNeedle);
    return true;
}();
