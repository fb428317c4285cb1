#include "soundoutput.h"

#include "audiostage.h"
#include "svaudio/audioservice.h"

#include <QAudioDeviceInfo>
#include <QAudioOutput>
#include <QtMath>

static constexpr int samplesPerSecond = 44100;
static constexpr int loudest = 9000;

struct Note
{
    int hertz; // 0 for a rest
    int ms;
};

struct Loudness
{
    double left;
    double right;
};

static const QVector<Note> clickNotes = {{1800, 35}};
static const QVector<Note> informationNotes = {{660, 180}, {880, 180}, {1100, 320}};
static const QVector<Note> recognitionNotes = {{520, 90}, {0, 40}, {1040, 160}};
static const QVector<Note> warningNotes = {{1250, 110}, {0, 60}, {1250, 110}, {0, 60},
                                           {1250, 110}, {0, 60}, {1250, 220}};

static QByteArray samplesOf(const QVector<Note> &notes, const Loudness &loudness)
{
    QByteArray bytes;
    for (const Note &note : notes) {
        const int length = samplesPerSecond * note.ms / 1000;
        const int start = bytes.size();
        bytes.resize(start + length * 2 * int(sizeof(qint16)));
        auto *samples = reinterpret_cast<qint16 *>(bytes.data() + start);
        for (int i = 0; i < length; ++i) {
            const double fade = qExp(-4.0 * i / length);
            const double wave =
                note.hertz ? loudest * fade * qSin(2 * M_PI * note.hertz * i / samplesPerSecond)
                           : 0;
            *samples++ = qint16(wave * loudness.left);
            *samples++ = qint16(wave * loudness.right);
        }
    }
    return bytes;
}

SoundOutput::SoundOutput(AudioStage *stage, QObject *parent) : QObject(parent)
{
    connect(svaudio::AudioService::instance(), &svaudio::AudioService::beeped, this,
            &SoundOutput::beep);
    connect(stage, &AudioStage::voiceStarted, this, &SoundOutput::playVoice);
    connect(stage, &AudioStage::voiceStopped, this, &SoundOutput::stopVoice);
}

SoundOutput::~SoundOutput() = default;

/** Looks for an output with the first sound: a sound server may take its time to answer. */
void SoundOutput::open()
{
    m_opened = true;
    const QAudioDeviceInfo device = QAudioDeviceInfo::defaultOutputDevice();
    QAudioFormat format;
    format.setSampleRate(samplesPerSecond);
    format.setChannelCount(2);
    format.setSampleSize(16);
    format.setCodec(QStringLiteral("audio/pcm"));
    format.setByteOrder(QAudioFormat::LittleEndian);
    format.setSampleType(QAudioFormat::SignedInt);
    if (device.isNull() || !device.isFormatSupported(format))
        return;
    for (Player *player : {&m_clicks, &m_voice})
        player->output = std::make_unique<QAudioOutput>(device, format);
}

void SoundOutput::play(Player *player, const QByteArray &samples)
{
    if (!player->output)
        return;
    player->output->stop();
    player->buffer.close();
    player->samples = samples;
    player->buffer.setBuffer(&player->samples);
    player->buffer.open(QIODevice::ReadOnly);
    player->output->start(&player->buffer);
}

void SoundOutput::beep()
{
    static const QByteArray click = samplesOf(clickNotes, {1, 1});
    if (!m_opened)
        open();
    play(&m_clicks, click);
}

void SoundOutput::playVoice(int voice, int speakers)
{
    static constexpr int both = CentreSpeaker | Subwoofer;
    if (!m_opened)
        open();
    const auto loud = [speakers](int side) { return speakers & (side | both) ? 1.0 : 0.08; };
    const Loudness loudness = {loud(FrontLeftSpeaker | RearLeftSpeaker),
                               loud(FrontRightSpeaker | RearRightSpeaker)};
    const QVector<Note> &notes = voice == AudioStage::Information   ? informationNotes
                                 : voice == AudioStage::Recognition ? recognitionNotes
                                                                    : warningNotes;
    play(&m_voice, samplesOf(notes, loudness));
}

void SoundOutput::stopVoice()
{
    if (m_voice.output)
        m_voice.output->stop();
}
