#include "beeper.h"

#include "svaudio/audioservice.h"

#include <QAudioDeviceInfo>
#include <QAudioOutput>
#include <QtMath>

static constexpr int samplesPerSecond = 44100;

static QByteArray makeClick()
{
    static constexpr int length = samplesPerSecond * 35 / 1000;
    QByteArray bytes(length * int(sizeof(qint16)), Qt::Uninitialized);
    auto *samples = reinterpret_cast<qint16 *>(bytes.data());
    for (int i = 0; i < length; ++i) {
        const double fade = qExp(-6.0 * i / length);
        samples[i] = qint16(9000 * fade * qSin(2 * M_PI * 1800 * i / samplesPerSecond));
    }
    return bytes;
}

Beeper::Beeper(QObject *parent) : QObject(parent)
{
    connect(svaudio::AudioService::instance(), &svaudio::AudioService::beeped, this, &Beeper::beep);
}

Beeper::~Beeper() = default;

/** Looks for an output with the first touch: a sound server may take its time to answer. */
void Beeper::open()
{
    m_opened = true;
    const QAudioDeviceInfo device = QAudioDeviceInfo::defaultOutputDevice();
    QAudioFormat format;
    format.setSampleRate(samplesPerSecond);
    format.setChannelCount(1);
    format.setSampleSize(16);
    format.setCodec(QStringLiteral("audio/pcm"));
    format.setByteOrder(QAudioFormat::LittleEndian);
    format.setSampleType(QAudioFormat::SignedInt);
    if (device.isNull() || !device.isFormatSupported(format))
        return;
    m_click = makeClick();
    m_output = std::make_unique<QAudioOutput>(device, format);
}

void Beeper::beep()
{
    if (!m_opened)
        open();
    if (!m_output)
        return;
    m_output->stop();
    m_buffer.close();
    m_buffer.setBuffer(&m_click);
    m_buffer.open(QIODevice::ReadOnly);
    m_output->start(&m_buffer);
}
