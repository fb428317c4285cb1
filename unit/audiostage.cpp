#include "audiostage.h"

#include "audiomanager.h"
#include "calllog.h"
#include "eventhandler.h"
#include "mem/settingscache.h"
#include "norda/vtqservice.h"
#include "sourceinterface.h"
#include "windowstack.h"

#include <QSignalBlocker>
#include <QStringList>

struct VoiceRow
{
    AudioStage::Voice voice;
    int source;
    int startEvent;
    int stopEvent;
    const char *name;
};

// clang-format off
static constexpr VoiceRow voices[] = {
    {AudioStage::Information, 51, 29, 30, "Voice information"},
    {AudioStage::Recognition, 52, 31, 32, "Voice recognition"},
    {AudioStage::WarningTone, 53, 33, 34, "Warning tone"},
};

struct SpeakerName
{
    int bit;
    const char *text;
};
static constexpr SpeakerName speakers[] = {
    {FrontLeftSpeaker, "front left"}, {FrontRightSpeaker, "front right"},
    {RearLeftSpeaker,  "rear left"},  {RearRightSpeaker,  "rear right"},
    {CentreSpeaker,    "centre"},     {Subwoofer,         "subwoofer"},
};
// clang-format on

static constexpr int restoreDelayMs = 800;
static constexpr int mostEntries = 1000;

QString speakerNames(int mask)
{
    QStringList names;
    for (const SpeakerName &speaker : speakers) {
        if (mask & speaker.bit)
            names.append(QLatin1String(speaker.text));
    }
    return names.isEmpty() ? QStringLiteral("no speaker") : names.join(QStringLiteral(", "));
}

static const VoiceRow &rowOf(AudioStage::Voice voice)
{
    return voices[voice - AudioStage::Information];
}

AudioStage::AudioStage(WindowStack *windows, QObject *parent) : QObject(parent), m_windows(windows)
{
    connect(norda::VtqService::instance(), &norda::VtqService::audioInterruptNotify, this,
            &AudioStage::onNotice);
    connect(EventHandler::instance(), &EventHandler::raised, this, &AudioStage::onEvent);
    connect(CallLog::instance(), &CallLog::called, this, &AudioStage::onCall);
    connect(mem::SettingsCache::instance(), &mem::SettingsCache::changed, this,
            &AudioStage::onSetting);
}

AudioStage::~AudioStage() = default;

QString AudioStage::voiceName() const
{
    return m_voice == Silent ? QString() : QLatin1String(rowOf(m_voice).name);
}

void AudioStage::setFocusGranted(bool granted)
{
    static constexpr int denied = 1;
    AudioManager::instance()->setFocusResult(granted ? 0 : denied);
}

SourceInterface *AudioStage::source(Voice voice) const
{
    return m_windows->source(rowOf(voice).source);
}

void AudioStage::note(const QString &text)
{
    if (m_timeline.size() >= mostEntries)
        m_timeline.removeFirst();
    m_timeline.append({nowMs(), text});
    emit noted(text);
    emit changed();
}

void AudioStage::advance()
{
    const qint64 left = m_restoreAtMs - nowMs();
    const bool hasJumpedBack = left > restoreDelayMs;
    if (m_restoreAtMs >= 0 && (left <= 0 || hasJumpedBack))
        restoreMix();
}

/** Any voice source takes a notice: the playing voice is a state of the whole unit. */
static void sendToPlugin(SourceInterface *source, const char *slot, QGenericArgument first = {},
                         QGenericArgument second = {})
{
    if (auto *object = dynamic_cast<QObject *>(source))
        QMetaObject::invokeMethod(object, slot, Qt::DirectConnection, first, second);
}

void AudioStage::onNotice(unsigned char kind, unsigned char location)
{
    if (kind != 0 || m_voice != Silent)
        note(QStringLiteral("Module notice: kind %1, locations %2").arg(kind).arg(location));
    sendToPlugin(source(Information), "handingVTQAudioInterrupt", Q_ARG(uchar, kind),
                 Q_ARG(uchar, location));
}

void AudioStage::onEvent(int event)
{
    for (const VoiceRow &row : voices) {
        if (event == row.startEvent)
            start(row.voice);
        else if (event == row.stopEvent && m_voice == row.voice)
            stop();
    }
}

/** One voice at a time: a new one replaces the one that plays. */
void AudioStage::start(Voice voice)
{
    SourceInterface *started = source(voice);
    if (!started)
        return;
    if (m_voice != Silent && m_voice != voice)
        note(QStringLiteral("%1 is interrupted").arg(voiceName()));
    m_voice = voice;
    m_ducked = false;
    m_restoreAtMs = -1;
    m_restoring.stop();
    {
        const QSignalBlocker silent(CallLog::instance()); // the unit's own reading of the mask
        m_voiceSpeakers =
            mem::SettingsCache::instance()->getValue(QStringLiteral("QUILLO_VOICE_MIX_VALUE"), 0);
    }
    m_musicSpeakers = AllSpeakers & ~m_voiceSpeakers;
    note(QStringLiteral("%1 begins, from %2").arg(voiceName(), speakerNames(m_voiceSpeakers)));
    started->start(QByteArray());
    if (!m_ducked)
        note(QStringLiteral("Audio focus denied: the music continues"));
    emit voiceStarted(m_voice, m_voiceSpeakers);
}

void AudioStage::stop()
{
    source(m_voice)->stop(QByteArray());
    note(QStringLiteral("%1 ends").arg(voiceName()));
    m_voice = Silent;
    m_ducked = false;
    if (m_clock)
        m_restoreAtMs = nowMs() + restoreDelayMs;
    else
        m_restoring.start(restoreDelayMs, this);
    emit voiceStopped();
    emit changed();
}

void AudioStage::timerEvent(QTimerEvent *)
{
    restoreMix();
}

void AudioStage::restoreMix()
{
    m_restoreAtMs = -1;
    m_restoring.stop();
    sendToPlugin(source(WarningTone), "onDelayRestoreMixTimeOut");
}

void AudioStage::onCall(const QString &operation, const QVariantList &arguments)
{
    if (operation == QLatin1String("svaudio::AudioService::setMainAudioStatus")) {
        note(QStringLiteral("Audio status %1").arg(arguments.value(0).toInt()));
    } else if (operation == QLatin1String("AudioManager::requestAudioFocus")) {
        note(QStringLiteral("%1 requests the audio focus").arg(arguments.value(2).toString()));
    } else if (operation == QLatin1String("svaudio::AudioService::setMainAudioSource")) {
        m_ducked = true;
        note(QStringLiteral("Audio source %1: the music ducks").arg(arguments.value(0).toInt()));
    } else if (operation == QLatin1String("mcu::McuService::setMixChannel")) {
        const int channels = arguments.value(0).toInt();
        const bool on = arguments.value(1).toInt() == 1;
        m_musicSpeakers = on ? m_musicSpeakers | channels : m_musicSpeakers & ~channels;
        note(QStringLiteral("Mix channels %1 %2")
                 .arg(channels)
                 .arg(on ? QStringLiteral("on") : QStringLiteral("off")));
    }
}

void AudioStage::onSetting(const QString &key, const QVariant &value)
{
    if (key != QLatin1String("QUILLO_SHOW_VOL") || value.toBool() == m_volumeShown)
        return;
    m_volumeShown = value.toBool();
    note(m_volumeShown ? QStringLiteral("Volume display shown")
                       : QStringLiteral("Volume display hidden"));
}
