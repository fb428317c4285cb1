#include "session/session.h"

#include "audiostage.h"
#include "calllog.h"
#include "cameraview.h"
#include "session/journalsnapshot.h"
#include "session/warnings.h"
#include "svaudio/audioservice.h"
#include "windowstack.h"

#include <QJsonArray>
#include <QJsonObject>

Session::Session(std::unique_ptr<module::VehicleSource> source, QObject *parent)
    : QObject(parent)
    , m_drive(std::move(source))
    , m_tap(module::moduleEmitters(),
            [this](const QByteArray &name, const QVariantList &arguments) {
                onSignal(name, arguments);
            })
{
    m_wall.start();
    m_drive.source()->setNotify([this](const QString &line) {
        addMark(line);
        emit noticed(line);
    });
    connect(CallLog::instance(), &CallLog::called, this, &Session::onCall);
    connect(&m_drive, &module::Drive::jumped, this, &Session::onJump);
    connect(&m_drive, &module::Drive::positionChanged, this, &Session::logQuantities);
    connect(svaudio::AudioService::instance(), &svaudio::AudioService::beeped, this,
            [this] { ++m_beeps; });
}

Session::~Session()
{
    finish();
}

void Session::connectAudio(AudioStage *stage)
{
    m_stage = stage;
    const QPointer<Session> session = this;
    stage->setClock([session] { return session ? session->nowMs() : 0; });
    connect(&m_drive, &module::Drive::positionChanged, stage, &AudioStage::advance);
    // Before what is due then: the order must not depend on when the clock is looked at.
    connect(&m_drive, &module::Drive::reached, stage, &AudioStage::advance);
    connect(stage, &AudioStage::noted, this,
            [this](const QString &text) { m_journal.note(nowMs(), Journal::Sound, text, {}); });
}

void Session::open(WindowStack *windows, int page)
{
    if (!m_drive.source()->isCatchingUp())
        recordAction(QStringLiteral("page"), {page});
    windows->openWindow(page);
}

void Session::watchPages(WindowStack *windows)
{
    const auto note = [this](int id) {
        if (isRewound() || m_finished)
            return;
        m_journal.note(nowMs(), Journal::Page, QStringLiteral("page"), {id});
        if (m_recording)
            m_recording->setPage(id);
    };
    connect(windows, &WindowStack::windowOpened, this, note);
    if (windows->currentWindow() >= 0)
        note(windows->currentWindow());
}

RearView Session::rearView() const
{
    const module::RearView view = m_drive.source()->rearView();
    return {view.steeringDegrees, view.headingDegrees, view.wall, view.bayX,
            view.postX,           view.postZ};
}

void Session::connectCamera(CameraView *camera)
{
    const auto show = [this, camera] { camera->setView(rearView()); };
    connect(&m_drive, &module::Drive::positionChanged, camera, show);
    show();
}

bool Session::record(const QString &file, qint64 limitBytes, const output::InputFiles &inputs,
                     QString *error)
{
    m_recording =
        std::make_unique<module::RecordingWriter>(file, m_drive.source()->title(), error, inputs);
    m_recording->setLimit(limitBytes);
    return m_recording->isOpen();
}

bool Session::startRecording(const QString &file, qint64 limitBytes,
                             const output::InputFiles &inputs, QString *error)
{
    if (!record(file, limitBytes, inputs, error)) {
        m_recording.reset();
        return false;
    }
    m_recordingSinceMs = nowMs();
    const QVector<int> &pages = m_journal.ofKind(Journal::Page);
    if (!pages.isEmpty())
        m_recording->setPage(m_journal.entries()[pages.constLast()].arguments.value(0).toInt());
    QVector<module::Emission> state;
    for (const int place : snapshotOf(m_journal, nowMs())) {
        const Journal::Entry &entry = m_journal.entries()[place];
        state.append({entry.ms, m_journal.nameOf(entry).toLatin1(), entry.arguments});
    }
    m_recording->beginAt(nowMs(), state);
    return true;
}

QString Session::stopRecording()
{
    if (!m_recording)
        return {};
    m_recording->finish(nowMs());
    reportNotice();
    QString file = m_recording->path();
    m_recording.reset();
    return file;
}

const module::RecordingWriter *Session::recording() const
{
    return m_recording.get();
}

void Session::continueRecording(Session *before)
{
    m_recording = std::move(before->m_recording);
    if (!m_recording)
        return;
    m_recording->beginNextDrive(before->nowMs());
    m_recordingSinceMs = before->m_recordingSinceMs - before->nowMs();
    addMark(m_drive.source()->title());
    emit noticed(QStringLiteral("The recording continues with %1").arg(m_drive.source()->title()));
}

void Session::recordAction(const QString &word, const QVariantList &arguments)
{
    if (!isRecording())
        return;
    m_recording->writeAction(nowMs(), word, arguments);
    reportNotice();
}

void Session::finish()
{
    if (m_finished)
        return;
    m_finished = true;
    m_drive.source()->finish(m_drive.nowMs());
    if (!m_recording)
        return;
    m_recording->finish(nowMs());
    reportNotice();
}

void Session::setRewound(qint64 ms)
{
    m_rewoundMs = ms;
    m_drive.setAnswering(false);
}

void Session::setLive()
{
    m_rewoundMs = -1;
    m_drive.setAnswering(true);
}

void Session::addMark(const QString &text)
{
    m_journal.note(isRewound() ? m_rewoundMs : nowMs(), Journal::Mark, text, {});
}

/** The session's time never jumps back, so its recording stays in order. */
void Session::onJump(qint64 fromMs, qint64 toMs)
{
    m_jumpedMs += fromMs - toMs;
    m_sampledMs = toMs - 1;
}

void Session::logQuantities(qint64 driveMs)
{
    if (m_journal.limit() == 0 || driveMs <= m_sampledMs)
        return;
    const QVector<module::Sample> samples = m_drive.source()->samplesOf(m_sampledMs, driveMs);
    for (const module::Sample &sample : samples)
        m_quantities.add(sample.atMs + m_jumpedMs, sample.quantity, double(sample.value));
    m_sampledMs = driveMs;
}

void Session::reportNotice()
{
    const QString notice = m_recording->takeNotice();
    if (notice.isEmpty())
        return;
    emit noticed(notice);
    if (m_recording->hasFailed())
        emit recordingFailed();
}

void Session::onSignal(const QByteArray &name, const QVariantList &arguments)
{
    if (m_finished || isRewound() || m_drive.isRepeating())
        return;
    m_journal.noteSignal(nowMs(), name, arguments);
    if (m_recording) {
        m_recording->writeSignal(nowMs(), name, arguments);
        reportNotice();
    }
    if (name == "centerGaugeValueNotify" && arguments.value(0).toInt() > m_fastestRpm) {
        m_fastestRpm = arguments.value(0).toInt();
        m_fastestMs = m_drive.positionMs();
    }
}

void Session::onCall(const QString &operation, const QVariantList &arguments)
{
    if (m_finished || isRewound() || m_drive.isRepeating())
        return;
    m_journal.note(nowMs(), Journal::Call, operation, arguments);
    // Catching up with a recording is not part of the session.
    if (!m_recording || m_drive.source()->isCatchingUp())
        return;
    m_recording->writeCall(nowMs(), operation, arguments);
    reportNotice();
}

static QJsonObject byName(const Journal &journal, Journal::Kind kind)
{
    QJsonObject object;
    for (const Journal::Total &total : journal.totals()) {
        if (total.kind == kind)
            object.insert(total.name, total.count);
    }
    return object;
}

static QJsonArray timeline(const AudioStage *stage)
{
    QJsonArray lines;
    if (!stage)
        return lines;
    for (const AudioStage::Entry &entry : stage->timeline())
        lines.append(QJsonObject{{"t", double(entry.ms) / 1000.0}, {"what", entry.text}});
    return lines;
}

QJsonObject Session::summary(int framesPainted) const
{
    QJsonObject source = m_drive.source()->statistics();
    source.insert(QStringLiteral("title"), m_drive.source()->title());
    return {{"driveSeconds", double(m_drive.positionMs()) / 1000.0},
            {"wallSeconds", double(m_wall.elapsed()) / 1000.0},
            {"source", source},
            {"signalsTotal", signalCount()},
            {"signals", byName(m_journal, Journal::Signal)},
            {"callsTotal", callCount()},
            {"calls", byName(m_journal, Journal::Call)},
            {"framesPainted", framesPainted},
            {"beeps", m_beeps},
            {"audio", timeline(m_stage)},
            {"faults", m_drive.faults().statistics()},
            {"droppedInput", m_drive.refused()},
            {"warnings", Warnings::count()},
            {"firstWarnings", QJsonArray::fromStringList(Warnings::first())}};
}
