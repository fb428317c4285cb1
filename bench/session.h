#pragma once

#include "adaptortap.h"
#include "drive.h"
#include "recording.h"

#include <QElapsedTimer>
#include <QMap>
#include <QObject>
#include <QPointer>

#include <memory>

class AudioStage;
class CameraView;

/**
 * One drive from its start to its end: the source on its virtual clock, the recording, and the
 * count of all that crossed the adaptor.
 */
class Session : public QObject
{
    Q_OBJECT
public:
    explicit Session(std::unique_ptr<module::VehicleSource> source, QObject *parent = nullptr);
    ~Session() override;

    module::Drive *drive() { return &m_drive; }
    /** Gives an audio stage the drive's time; its time line goes into the summary. */
    void lead(AudioStage *stage);
    /** Lets a camera see what is behind the car. */
    void feed(CameraView *camera);
    /** @param error  one line, when the file cannot be written */
    bool record(const QString &file, QString *error);
    /** Ends the recording and the count; what crosses the adaptor later is left out. */
    void finish();

    int signalCount() const { return m_signalCount; }
    int callCount() const { return m_callCount; }
    int beepCount() const { return m_beeps; }
    /** Drive time at which the engine turned fastest. */
    qint64 fastestMs() const { return m_fastestMs; }

    QJsonObject summary(int framesPainted) const;

signals:
    void called(const QString &operation, const QVariantList &arguments);
    /** A counter moved. */
    void counted();

private:
    void onSignal(const QByteArray &name, const QVariantList &arguments);
    void onCall(const QString &operation, const QVariantList &arguments);

    module::Drive m_drive;
    module::AdaptorTap m_tap;
    QPointer<AudioStage> m_stage;
    std::unique_ptr<module::RecordingWriter> m_recording;
    QElapsedTimer m_wall;
    QMap<QString, int> m_signals;
    QMap<QString, int> m_calls;
    int m_signalCount = 0;
    int m_callCount = 0;
    int m_beeps = 0;
    int m_fastestRpm = -1;
    qint64 m_fastestMs = 0;
    bool m_finished = false;
};
