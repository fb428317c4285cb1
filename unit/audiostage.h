#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QVariant>
#include <QVector>

#include <functional>

class WindowStack;
class SourceInterface;

/** Speaker locations of the mix, as the mixer numbers them: bits 0 to 5. */
enum SpeakerBit {
    FrontLeftSpeaker = 1,
    FrontRightSpeaker = 2,
    RearRightSpeaker = 4,
    RearLeftSpeaker = 8,
    CentreSpeaker = 16,
    Subwoofer = 32,
    AllSpeakers = 63,
};

/**
 * The head unit's audio policy for the plugin's voice sources: forwards the module's notices to
 * them, starts and stops them on their events, ducks the music while one has the focus, and
 * restores the mix shortly after. Everything is noted on a timeline.
 */
class AudioStage : public QObject
{
    Q_OBJECT
public:
    enum Voice { Silent, Information, Recognition, WarningTone };
    struct Entry
    {
        qint64 ms; // of drive time
        QString text;
    };

    explicit AudioStage(WindowStack *windows, QObject *parent = nullptr);
    ~AudioStage() override;

    Voice voice() const { return m_voice; }
    QString voiceName() const;
    bool isDucked() const { return m_ducked; }
    bool isVolumeShown() const { return m_volumeShown; }
    /** The speakers that the voice comes from. */
    int voiceSpeakers() const { return m_voice == Silent ? 0 : m_voiceSpeakers; }
    /** The speakers that play the music. */
    int musicSpeakers() const { return m_musicSpeakers; }
    /** The last thousand entries, oldest first. */
    const QVector<Entry> &timeline() const { return m_timeline; }

    /** Whether the plugin's next request for the audio focus is granted. */
    void setFocusGranted(bool granted);

    /**
     * The source of the drive time. Without a clock it is always 0, and the mix is restored in real
     * time.
     */
    void setClock(std::function<qint64()> clock) { m_clock = std::move(clock); }

public slots:
    /** The drive time has advanced. */
    void advance();

signals:
    /** Any of the properties above has changed. */
    void changed();
    void voiceStarted(int voice, int speakers);
    void voiceStopped();
    /** The timeline has a new entry. */
    void noted(const QString &text);

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void onNotice(unsigned char kind, unsigned char location);
    void onEvent(int event);
    void onCall(const QString &operation, const QVariantList &arguments);
    void onSetting(const QString &key, const QVariant &value);
    void start(Voice voice);
    void stop();
    void restoreMix();
    void note(const QString &text);
    qint64 nowMs() const { return m_clock ? m_clock() : 0; }
    SourceInterface *source(Voice voice) const;

    WindowStack *m_windows;
    Voice m_voice = Silent;
    int m_voiceSpeakers = 0;
    int m_musicSpeakers = AllSpeakers;
    bool m_ducked = false;
    bool m_volumeShown = true;
    std::function<qint64()> m_clock;
    qint64 m_restoreAtMs = -1;
    QBasicTimer m_restoring; // without a clock
    QVector<Entry> m_timeline;
};

/** The names of speakers in a mask, for a person. */
QString speakerNames(int mask);
