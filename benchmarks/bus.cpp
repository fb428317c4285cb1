#include "adaptorlink.h"
#include "client.h"
#include "counters.h"
#include "interface.h"
#include "norda/vtqadaptor.h"
#include "norda/vtqservice.h"
#include "norda/widget/vantiq_gague_widget.h"
#include "pairs.h"
#include "service/moduleservice.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>

#include <benchmark/benchmark.h>

#include <memory>

/*
 * A gauge value that crosses the bus (module, marshalling, bus, unit's thread, unit) and is shown
 * by the page, against one that the module of the same process emits.
 */

static constexpr int burst = 10000;

/** A bus of its own, with a module and a unit at its ends. */
class Ends
{
public:
    Ends()
        : m_interface({&norda::VtqAdaptor::staticMetaObject, &norda::VtqService::staticMetaObject})
    {
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--session"), QStringLiteral("--nofork"),
                        QStringLiteral("--print-address")});
        if (!m_daemon.waitForReadyRead())
            return;
        const QString address = QString::fromLatin1(m_daemon.readLine().trimmed());
        QString error;
        if (!m_service.open(address, &error))
            return;
        m_unit = std::make_unique<bus::Client>(m_interface);
        QObject::connect(m_unit.get(), &bus::Client::received, m_unit.get(),
                         [this] { ++m_received; });
        m_unit->open(address);
        waitUntil([this] { return m_unit->state() == bus::Client::Connected; });
        m_received = 0;
    }
    ~Ends()
    {
        m_unit.reset();
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

    bool isUsable() const { return m_unit && m_unit->state() == bus::Client::Connected; }
    int received() const { return m_received; }

    template <typename Condition>
    static void waitUntil(Condition isMet)
    {
        static constexpr int longestMs = 30000;
        QElapsedTimer waited;
        for (waited.start(); !isMet() && waited.elapsed() < longestMs;)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    }

private:
    QProcess m_daemon;
    bus::Interface m_interface;
    module::ModuleService m_service;
    std::unique_ptr<bus::Client> m_unit;
    int m_received = 0;
};

static void emitValue(int turn)
{
    const QString number = QString::number(turn % 250);
    emit norda::VtqAdaptor::instance()->gaugeTLValueDualNotify(
        number, QStringLiteral("F"), static_cast<unsigned char>(turn % 250));
}

static double secondsOf(const std::function<void()> &work)
{
    QElapsedTimer time;
    time.start();
    work();
    return double(time.nsecsElapsed()) * 1e-9;
}

/** One value after the other, each delivered and painted before the next is sent. */
static void oneSignal(benchmark::State &state)
{
    static constexpr int rounds = 15;
    static constexpr int values = 200;
    norda::Vantiq_Gaugue_Widget page;
    page.show();
    settle(100);
    int turn = 0;
    const Round inProcess = [&] {
        return secondsOf([&] {
                   for (int i = 0; i < values; ++i) {
                       emitValue(turn++);
                       paintNow(&page);
                   }
               }) /
               values;
    };
    bool isUsable = true;
    const Round overTheBus = [&] {
        Ends ends;
        isUsable &= ends.isUsable();
        return secondsOf([&] {
                   for (int i = 0; i < values && isUsable; ++i) {
                       const int before = ends.received();
                       emitValue(turn++);
                       Ends::waitUntil([&] { return ends.received() > before; });
                       paintNow(&page);
                   }
               }) /
               values;
    };
    measureInTurns(state, rounds, overTheBus, inProcess);
    if (!isUsable)
        state.SkipWithError("expected dbus-daemon to start");
}
BENCHMARK(oneSignal)
    ->Name("bus/signal")
    ->Unit(benchmark::kMicrosecond)
    ->UseManualTime()
    ->Iterations(1);

/** Many at once: the time for all, and what still waits at the end. */
static void manySignals(benchmark::State &state)
{
    Ends ends;
    if (!ends.isUsable()) {
        state.SkipWithError("expected dbus-daemon to start");
        return;
    }
    for (auto _ : state) {
        const int before = ends.received();
        for (int i = 0; i < burst; ++i)
            emitValue(i);
        Ends::waitUntil([&] { return ends.received() - before >= burst; });
        if (ends.received() - before != burst)
            state.SkipWithError("signals were lost");
    }
    state.counters["signals"] = burst;
}
BENCHMARK(manySignals)->Name("bus/burst")->Unit(benchmark::kMillisecond);
