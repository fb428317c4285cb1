#include "session.h"

#include "audiostage.h"
#include "calllog.h"
#include "cameraview.h"
#include "svaudio/audioservice.h"
#include "warnings.h"

#include <QJsonArray>
#include <QJsonObject>

Session::Session(std::unique_ptr<module::VehicleSource> source, QObject *parent)
    : QObject(parent)
    , m_drive(std::move(source))
    , m_tap([this](const QByteArray &name, const QVariantList &arguments) {
        onSignal(name, arguments);
    })
{
    m_wall.start();
    connect(CallLog::instance(), &CallLog::called, this, &Session::onCall);
    connect(svaudio::AudioService::instance(), &svaudio::AudioService::beeped, this,
            [this] { ++m_beeps; });
}

Session::~Session()
{
    finish();
}

void Session::lead(AudioStage *stage)
{
    m_stage = stage;
    const QPointer<Session> session = this;
    stage->setClock([session] { return session ? session->m_drive.positionMs() : 0; });
    connect(&m_drive, &module::Drive::positionChanged, stage, &AudioStage::advance);
}

void Session::feed(CameraView *camera)
{
    const auto show = [this, camera] { camera->setView(m_drive.source()->rearView()); };
    connect(&m_drive, &module::Drive::positionChanged, camera, show);
    show();
}

bool Session::record(const QString &file, QString *error)
{
    m_recording = std::make_unique<module::RecordingWriter>(file, m_drive.source()->title(), error);
    return m_recording->isOpen();
}

void Session::finish()
{
    if (m_finished)
        return;
    m_finished = true;
    if (m_recording)
        m_recording->finish(m_drive.positionMs());
}

void Session::onSignal(const QByteArray &name, const QVariantList &arguments)
{
    if (m_finished)
        return;
    ++m_signals[QString::fromLatin1(name)];
    ++m_signalCount;
    if (m_recording)
        m_recording->writeSignal(m_drive.positionMs(), name, arguments);
    if (name == "centerGaugeValueNotify" && arguments.value(0).toInt() > m_fastestRpm) {
        m_fastestRpm = arguments.value(0).toInt();
        m_fastestMs = m_drive.positionMs();
    }
    emit counted();
}

void Session::onCall(const QString &operation, const QVariantList &arguments)
{
    if (m_finished)
        return;
    ++m_calls[operation];
    ++m_callCount;
    if (m_recording)
        m_recording->writeCall(m_drive.positionMs(), operation, arguments);
    emit called(operation, arguments);
    emit counted();
}

static QJsonObject byName(const QMap<QString, int> &counts)
{
    QJsonObject object;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        object.insert(it.key(), it.value());
    return object;
}

static QJsonArray timeLine(const AudioStage *stage)
{
    QJsonArray lines;
    if (!stage)
        return lines;
    for (const AudioStage::Entry &entry : stage->timeLine())
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
            {"signalsTotal", m_signalCount},
            {"signals", byName(m_signals)},
            {"callsTotal", m_callCount},
            {"calls", byName(m_calls)},
            {"framesPainted", framesPainted},
            {"beeps", m_beeps},
            {"audio", timeLine(m_stage)},
            {"faults", m_drive.faults().statistics()},
            {"droppedInput", m_drive.refused()},
            {"warnings", Warnings::count()},
            {"firstWarnings", QJsonArray::fromStringList(Warnings::first())}};
}
