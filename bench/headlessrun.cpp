#include "headlessrun.h"

#include "options.h"
#include "report/picturetrail.h"
#include "results.h"
#include "session/rig.h"
#include "session/warnings.h"

#include <QCoreApplication>

#include <cstdio>
#include <unistd.h>

HeadlessRun::HeadlessRun(const Options &options, Rig *rig)
    : m_options(options), m_rig(rig), m_drive(rig->session()->drive())
{
    if (!options.report.isEmpty())
        prepareReport();
    connect(rig, &Rig::noticed, this,
            [](const QString &line) { std::fprintf(stderr, "%s\n", qPrintable(line)); });
    connect(m_drive, &module::Drive::positionChanged, this, &HeadlessRun::showProgress);
    connect(m_drive, &module::Drive::finished, this, &HeadlessRun::end);
    connect(rig->session(), &Session::recordingFailed, this, &HeadlessRun::stop);
    connect(&m_endRequest, &EndRequest::requested, this, &HeadlessRun::stop);
}

HeadlessRun::~HeadlessRun() = default;

void HeadlessRun::prepareReport()
{
    m_trail = std::make_unique<PictureTrail>(m_rig);
    Warnings::instance()->beginDrive(m_rig->session(), m_rig->unit()->windows());
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

void HeadlessRun::stop()
{
    m_drive->pause();
    end();
}

/** Once: the gallery handles events, and seeks in the drive again, which is no progress. */
void HeadlessRun::end()
{
    disconnect(m_drive, nullptr, this, nullptr);
    disconnect(m_rig->session(), nullptr, this, nullptr);
    disconnect(&m_endRequest, nullptr, this, nullptr);
    m_rig->endReplay();
    QCoreApplication::exit(writeResults(m_options, m_rig, m_trail.get()) ? 0 : 2);
}
