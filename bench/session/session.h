#pragma once

#include "adaptortap.h"
#include "drive.h"
#include "rearview.h"
#include "recording.h"
#include "session/journal.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>

#include <memory>

class AudioStage;
class CameraView;
class WindowStack;

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
    /** Opens the page that the session begins on. */
    void open(WindowStack *windows, int page);
    /** Notes which pages a head unit opens. */
    void watch(WindowStack *windows);
    /** Notes in the recording what somebody does at the unit. */
    void recordAction(const QString &word, const QVariantList &arguments);
    /** Lets a camera see what is behind the car. */
    void feed(CameraView *camera);
    RearView rearView() const;
    /**
     * @param limitBytes  what the recording may take; the oldest part goes first
     * @param error       one line, when the file cannot be written
     */
    bool record(const QString &file, qint64 limitBytes, QString *error);
    /** The recording of the session before goes on with this one, and says so. */
    void goOnRecording(Session *before);
    /** Ends the recording and the count; what crosses the adaptor later is left out. */
    void finish();

    /** What happened; without entries unless somebody gives it a limit. */
    Journal *journal() { return &m_journal; }
    const Journal *journal() const { return &m_journal; }
    /** Drive time that has passed: it goes on where somebody jumps in the drive. */
    qint64 nowMs() const { return m_drive.nowMs() + m_jumpedMs; }
    /** While it looks back, what crosses the adaptor is not the drive's and is left out. */
    void setRewound(bool on);
    bool isRewound() const { return m_isRewound; }

    int signalCount() const { return m_journal.count(Journal::Signal); }
    int callCount() const { return m_journal.count(Journal::Call); }
    int beepCount() const { return m_beeps; }
    /** Drive time at which the engine turned fastest. */
    qint64 fastestMs() const { return m_fastestMs; }

    QJsonObject summary(int framesPainted) const;

signals:
    /** Something that a person should know, in one line. */
    void noticed(const QString &line);

private:
    void onSignal(const QByteArray &name, const QVariantList &arguments);
    void onCall(const QString &operation, const QVariantList &arguments);
    void onJump(qint64 fromMs, qint64 toMs);
    void tell();
    bool isRecording() const { return m_recording && !m_finished && !m_isRewound; }

    module::Drive m_drive;
    module::AdaptorTap m_tap;
    QPointer<AudioStage> m_stage;
    std::unique_ptr<module::RecordingWriter> m_recording;
    QElapsedTimer m_wall;
    Journal m_journal;
    qint64 m_jumpedMs = 0;
    int m_beeps = 0;
    int m_fastestRpm = -1;
    qint64 m_fastestMs = 0;
    bool m_isRewound = false;
    bool m_finished = false;
};
