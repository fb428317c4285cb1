#pragma once

#include "drive.h"
#include "rearview.h"
#include "recording.h"
#include "session/journal.h"
#include "session/quantitylog.h"
#include "signaltap.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>

#include <memory>

class AudioStage;
class CameraView;
class WindowStack;

/**
 * One drive from its start to its end: the source on its virtual clock, the recording, and the
 * count of everything that crossed the adaptor.
 */
class Session : public QObject
{
    Q_OBJECT
public:
    explicit Session(std::unique_ptr<module::VehicleSource> source, QObject *parent = nullptr);
    ~Session() override;

    module::Drive *drive() { return &m_drive; }
    /** Gives an audio stage the drive's time, and takes its timeline into the summary. */
    void connectAudio(AudioStage *stage);
    /** Opens the page that the session begins on. */
    void open(WindowStack *windows, int page);
    /** Journals the pages that a head unit opens. */
    void watchPages(WindowStack *windows);
    /** Records an action at the unit. */
    void recordAction(const QString &word, const QVariantList &arguments);
    /** Shows what is behind the car on a camera view. */
    void connectCamera(CameraView *camera);
    RearView rearView() const;
    /**
     * @param limitBytes  maximum size of the recording; the oldest part is dropped
     * @param inputs      files that the recording must not replace
     * @param error       one line, when the file cannot be written
     */
    bool record(const QString &file, qint64 limitBytes, const output::InputFiles &inputs,
                QString *error);
    /** The same within the drive: it begins with the open page and a state snapshot. */
    bool startRecording(const QString &file, qint64 limitBytes, const output::InputFiles &inputs,
                        QString *error);
    /** Ends the recording. @return the file, empty when nothing was recorded */
    QString stopRecording();
    /** The current recording, null for none. */
    const module::RecordingWriter *recording() const;
    /** When it began in this session's time; before 0 where it began with the drive before. */
    qint64 recordingSinceMs() const { return m_recordingSinceMs; }
    /** Whether something of it could not be written, which noticed() has reported. */
    bool hasRecordingFailed() const { return m_recording && m_recording->hasFailed(); }
    /** Continues the recording of the session before, with a notice. */
    void continueRecording(Session *before);
    /** Ends the recording and the count; what crosses the adaptor later is left out. */
    void finish();

    /** Has no entries until it gets a limit. */
    Journal *journal() { return &m_journal; }
    const Journal *journal() const { return &m_journal; }
    /** Like the journal, it has no values until that gets a limit. */
    const QuantityLog &quantities() const { return m_quantities; }
    /** Drive time that has passed: it continues across jumps in the drive. */
    qint64 nowMs() const { return m_drive.nowMs() + m_jumpedMs; }
    /** While rewound, what crosses the adaptor is not from the drive and is ignored. */
    void setRewound(qint64 ms);
    void setLive();
    bool isRewound() const { return m_rewoundMs >= 0; }
    /** Marks the moment that the screen shows: the present, or the one that it is rewound to. */
    void addMark(const QString &text);

    int signalCount() const { return m_journal.count(Journal::Signal); }
    int callCount() const { return m_journal.count(Journal::Call); }
    int beepCount() const { return m_beeps; }
    /** Drive time at which the engine turned fastest. */
    qint64 fastestMs() const { return m_fastestMs; }

    QJsonObject summary(int framesPainted) const;

signals:
    /** A notice for the user, in one line. */
    void noticed(const QString &line);
    /** Later than the notice with the reason, once. */
    void recordingFailed();

private:
    void onSignal(const QByteArray &name, const QVariantList &arguments);
    void onCall(const QString &operation, const QVariantList &arguments);
    void onJump(qint64 fromMs, qint64 toMs);
    void logQuantities(qint64 driveMs);
    void reportNotice();
    bool isRecording() const { return m_recording && !m_finished && !isRewound(); }

    module::Drive m_drive;
    bus::SignalTap m_tap;
    QPointer<AudioStage> m_stage;
    std::unique_ptr<module::RecordingWriter> m_recording;
    QElapsedTimer m_wall;
    Journal m_journal;
    QuantityLog m_quantities;
    qint64 m_sampledMs = -1; // of the drive, up to which the quantities are logged
    qint64 m_jumpedMs = 0;
    qint64 m_recordingSinceMs = 0;
    int m_beeps = 0;
    int m_fastestRpm = -1;
    qint64 m_fastestMs = 0;
    qint64 m_rewoundMs = -1; // the moment on the screen; -1 for the present
    bool m_finished = false;
};
