#pragma once

#include <QBuffer>
#include <QObject>

#include <memory>

class AudioStage;
class QAudioOutput;

/**
 * Plays the touch click and the module's voice where the machine has a sound output. The spoken
 * prompts are chimes, since their speech is the module's own.
 */
class SoundOutput : public QObject
{
    Q_OBJECT
public:
    explicit SoundOutput(AudioStage *stage, QObject *parent = nullptr);
    ~SoundOutput() override;

private:
    struct Player
    {
        std::unique_ptr<QAudioOutput> output;
        QByteArray samples;
        QBuffer buffer;
    };
    void open();
    void beep();
    void playVoice(int voice, int speakers);
    void stopVoice();
    static void play(Player *player, const QByteArray &samples);

    Player m_clicks;
    Player m_voice;
    bool m_opened = false;
};
