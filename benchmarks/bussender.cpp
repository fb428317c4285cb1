#include "bussender.h"

#include "busycar.h"

#include <QAbstractEventDispatcher>
#include <QCanBus>
#include <QCanBusDevice>
#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QSocketNotifier>
#include <QTcpServer>

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <memory>
#include <random>

static constexpr char variable[] = "NORDA_BUS_SENDER";
static constexpr qint64 nsPerSecond = 1000000000;

qint64 monotonicNs()
{
    timespec now;
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return qint64(now.tv_sec) * nsPerSecond + now.tv_nsec;
}

// ---- The sending process ------------------------------------------------------------------------

static void sleepUntil(qint64 ns)
{
    const timespec moment = {time_t(ns / nsPerSecond), long(ns % nsPerSecond)};
    while (::clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &moment, nullptr) == EINTR) {
    }
}

static void handleEvents()
{
    while (QCoreApplication::eventDispatcher()->processEvents(QEventLoop::AllEvents)) {
    }
}

/** An engine speed that goes up and down, at moments that keep no step with anything. */
class EngineSteps
{
public:
    /** Puts the engine speed of this moment into its message. */
    void fill(module::CanFrame *frame)
    {
        static constexpr qint64 nsPerMs = 1000000;
        if (frame->id != busycar::engineId)
            return;
        const qint64 nowNs = monotonicNs();
        if (nowNs >= m_nextNs) {
            m_isUp = !m_isUp;
            m_nextNs = nowNs + m_gapMs(m_random) * nsPerMs;
            m_steps.append({nowNs, m_isUp});
        }
        frame->data[0] = m_isUp ? busycar::engineByte(7000) : busycar::engineByte(1000);
    }
    const QVector<BusSender::Step> &steps() const { return m_steps; }

private:
    std::mt19937 m_random;
    std::uniform_int_distribution<qint64> m_gapMs{150, 250};
    qint64 m_nextNs = 0;
    bool m_isUp = false;
    QVector<BusSender::Step> m_steps;
};

/** One by one, as a bus carries them; what comes too late follows at once. */
static void send(QCanBusDevice *bus, int seconds)
{
    static constexpr qint64 frameNs = nsPerSecond / busycar::framesPerSecond;
    EngineSteps engine;
    const int count = seconds * busycar::framesPerSecond;
    const qint64 startNs = monotonicNs();
    for (int i = 0; i < count; ++i) {
        sleepUntil(startNs + i * frameNs);
        module::CanFrame frame = busycar::frame(i);
        engine.fill(&frame);
        bus->writeFrame(QCanBusFrame(frame.id, frame.data));
        handleEvents();
    }
    std::printf("%d %f\n", count, double(monotonicNs() - startNs) / nsPerSecond);
    for (const BusSender::Step &step : engine.steps())
        std::printf("%lld %d\n", static_cast<long long>(step.ns), int(step.isUp));
    std::printf("end\n");
    std::fflush(stdout);
}

/** The bus is gone with this process, so that it waits for the end of its input. */
static int serve(const QString &interface)
{
    const std::unique_ptr<QCanBusDevice> bus(
        QCanBus::instance()->createDevice(QStringLiteral("virtualcan"), interface));
    if (!bus || !bus->connectDevice())
        return 1;
    while (bus->state() != QCanBusDevice::ConnectedState)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    std::printf("ready\n");
    std::fflush(stdout);
    QFile input;
    input.open(0, QIODevice::ReadOnly | QIODevice::Unbuffered);
    QSocketNotifier notifier(0, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &notifier, [&] {
        const QByteArray line = input.readLine();
        if (line.isEmpty())
            QCoreApplication::exit(0);
        else
            send(bus.get(), line.trimmed().toInt());
    });
    return QCoreApplication::exec();
}

bool runBusSender(int *exitCode)
{
    const QString interface = qEnvironmentVariable(variable);
    if (interface.isEmpty())
        return false;
    *exitCode = serve(interface);
    return true;
}

// ---- The measuring process ----------------------------------------------------------------------

/** A port that nobody uses. */
static quint16 freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

BusSender::BusSender() : m_interface(QStringLiteral("tcp://127.0.0.1:%1/can0").arg(freePort()))
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(variable), m_interface);
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QCoreApplication::applicationFilePath(), QStringList());
    if (!m_process.waitForReadyRead() || m_process.readLine() != "ready\n")
        qFatal("no bus on %s", qPrintable(m_interface));
}

BusSender::~BusSender()
{
    m_process.closeWriteChannel();
    m_process.waitForFinished();
}

void BusSender::start(int seconds)
{
    m_process.write(QByteArray::number(seconds) + '\n');
    m_process.waitForBytesWritten();
}

std::optional<BusSender::Report> BusSender::finish()
{
    QByteArray text;
    while (!text.endsWith("end\n")) {
        if (m_process.state() != QProcess::Running)
            return std::nullopt;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        text += m_process.readAllStandardOutput();
    }
    Report report;
    const QByteArrayList lines = text.split('\n');
    report.frames = lines.constFirst().split(' ').value(0).toLongLong();
    report.seconds = lines.constFirst().split(' ').value(1).toDouble();
    for (const QByteArray &line : lines.mid(1, lines.size() - 3))
        report.steps.append({line.split(' ').value(0).toLongLong(), line.endsWith('1')});
    return report;
}
