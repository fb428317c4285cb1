#include "headlessrun.h"

#include "options.h"
#include "session/rig.h"
#include "tools/gallery.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSocketNotifier>

#include <csignal>
#include <cstdio>
#include <sys/socket.h>
#include <unistd.h>

static int signalPipe[2] = {-1, -1};

static void onSignal(int)
{
    const char byte = 1;
    // If the pipe is full, the end is already requested.
    [[maybe_unused]] const auto written = ::write(signalPipe[1], &byte, 1);
}

HeadlessRun::HeadlessRun(const Options &options, Rig *rig)
    : m_options(options), m_rig(rig), m_drive(rig->session()->drive())
{
    connect(rig, &Rig::noticed, this,
            [](const QString &line) { std::fprintf(stderr, "%s\n", qPrintable(line)); });
    connect(m_drive, &module::Drive::positionChanged, this, &HeadlessRun::showProgress);
    connect(m_drive, &module::Drive::finished, this, &HeadlessRun::end);
    endOnSignals();
}

HeadlessRun::~HeadlessRun() = default;

void HeadlessRun::endOnSignals()
{
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPipe) != 0)
        return;
    auto *notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        m_drive->pause();
        end();
    });
    std::signal(SIGINT, onSignal);
    std::signal(SIGTERM, onSignal);
}

void HeadlessRun::start()
{
    const QStringList findings = m_drive->source()->findings();
    for (const QString &line : findings)
        std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
    m_rig->begin(Replay::Everything);
    m_drive->play();
}

void HeadlessRun::showProgress(qint64 ms)
{
    const qint64 duration = m_drive->durationMs();
    if (duration <= 0)
        return;
    const int percent = int(100 * ms / duration);
    const bool onTerminal = ::isatty(STDERR_FILENO);
    if (percent == m_lastPercent || (!onTerminal && percent / 10 == m_lastPercent / 10))
        return;
    m_lastPercent = percent;
    std::fprintf(stderr, "%s%3d %% of %lld s simulated%s", onTerminal ? "\r" : "", percent,
                 static_cast<long long>(duration / 1000), onTerminal && percent < 100 ? "" : "\n");
}

void HeadlessRun::end()
{
    // The gallery seeks in the drive again, which is no progress.
    disconnect(m_drive, nullptr, this, nullptr);
    m_rig->endReplay();
    QString error;
    const bool written = writeResults(m_options, m_rig, &error);
    if (!written)
        std::fprintf(stderr, "%s\n", qPrintable(error));
    QCoreApplication::exit(written ? 0 : 2);
}

static void printSummary(const QJsonObject &summary)
{
    std::printf("%.1f s simulated in %.1f s: %d signals, %d calls, %d frames, %d warnings\n",
                summary.value("driveSeconds").toDouble(), summary.value("wallSeconds").toDouble(),
                summary.value("signalsTotal").toInt(), summary.value("callsTotal").toInt(),
                summary.value("framesPainted").toInt(), summary.value("warnings").toInt());
}

static bool writeSummary(const QString &path, const QJsonObject &summary, QString *error)
{
    QFile file(path);
    const QByteArray text = QJsonDocument(summary).toJson();
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush())
        return true;
    *error =
        QStringLiteral("%1: expected a file that can be written: %2").arg(path, file.errorString());
    return false;
}

bool writeResults(const Options &options, Rig *rig, QString *error)
{
    Session *session = rig->session();
    session->finish();
    const QJsonObject summary = session->summary(rig->unit()->screen()->framesPainted());
    printSummary(summary);
    if (!options.summary.isEmpty() && !writeSummary(options.summary, summary, error))
        return false;
    if (options.gallery.isEmpty())
        return true;
    const QStringList files = writeGallery(options.gallery, rig, error);
    std::printf("%d pictures in %s\n", files.size(), qPrintable(options.gallery));
    return error->isEmpty();
}
