#include "btvoicesource.h"

#include "audiomanager.h"
#include "debug.h"
#include "eventhandler.h"
#include "keyevent.h"
#include "mcu/mcuservice.h"
#include "mem/settingscache.h"
#include "srcdsplctrl.h"
#include "svaudio/audioservice.h"

namespace norda {

/** One kind of interruption: what it is called, announced and started with. */
struct VoiceRow
{
    int voiceType; // value of the voice-type setting, and the kind of the module's notice
    const char *name;
    const char *message;
    svaudio::SVAudio_status_id_e onStart, onStop;
    bool logsStop;
    int startEvent, stopEvent;
};

// By the source's type.
// clang-format off
static constexpr VoiceRow voices[] = {
    {2, "vtq_info_voice", "Voice Information Interrupt",
     svaudio::SVAudio_status_voice_information_start,
     svaudio::SVAudio_status_voice_information_stop, true,  29, 30},
    {3, "vtq_reco_voice", "Voice Recognition Interrupt",
     svaudio::SVAudio_status_voice_recognition_start,
     svaudio::SVAudio_status_voice_recognition_stop, true,  31, 32},
    {4, "vtq_warn_tone",  "Warning Tone Interrupt",
     svaudio::SVAudio_status_warning_tone_start,
     svaudio::SVAudio_status_warning_tone_stop,      false, 33, 34},
};

/** Speaker bits as the module names them and as the mix mask does; two trade places. */
static constexpr struct { uchar location; int mask; } speakers[] = {
    {1, 1}, {2, 2}, {4, 8}, {8, 4}, {16, 16}, {32, 32},
};
// clang-format on

static constexpr int noVoice = -1;
static constexpr int blockingDisplay = 4;
static constexpr int allSpeakers = 63;
static constexpr int warningTone = 2;

// The host keeps these keys. A QStringLiteral would point into the library, which may be unloaded.
static const QString voiceTypeKey = QLatin1String("QUILLO_VOICE_TYPE");
static const QString showVolumeKey = QLatin1String("QUILLO_SHOW_VOL");
static const QString mixKey = QLatin1String("QUILLO_VOICE_MIX_VALUE");

static const VoiceRow &voiceOfSource(int type)
{
    return voices[type == 1 || type == 2 ? type : 0];
}

static const VoiceRow *voiceOfKind(int kind)
{
    const auto row =
        std::find_if(std::begin(voices), std::end(voices),
                     [kind](const VoiceRow &voice) { return voice.voiceType == kind; });
    return row == std::end(voices) ? nullptr : row;
}

static int playingKind()
{
    return mem::SettingsCache::instance()->getValue(voiceTypeKey, noVoice);
}

static void setPlayingKind(int kind)
{
    mem::SettingsCache::instance()->setValue(voiceTypeKey, noVoice, kind);
    mem::SettingsCache::instance()->setValue(showVolumeKey, true, kind == noVoice);
}

BTVoiceSource::BTVoiceSource(int type, QObject *parent) : QObject(parent), m_type(type)
{
    if (m_type == warningTone)
        NORDA_TRACE << "init m_delayRestoreMix";
}

BTVoiceSource::~BTVoiceSource() = default;

QString BTVoiceSource::name() const
{
    return QString::fromLatin1(voiceOfSource(m_type).name);
}

QString BTVoiceSource::clientId() const
{
    return name();
}

void BTVoiceSource::start(const QByteArray &)
{
    AutoPrint timer(Q_FUNC_INFO, 61);
    playVtqVoice();
    if (AudioManager::instance()->requestAudioFocus(1, 1, this) == 0)
        svaudio::AudioService::instance()->setMainAudioSource(svaudio::SVAudio_source_module_voice,
                                                              false);
}

void BTVoiceSource::stop(const QByteArray &)
{
    AutoPrint timer(Q_FUNC_INFO, 72);
    stopVtqVoice();
}

void BTVoiceSource::playVtqVoice()
{
    const VoiceRow *voice = voiceOfKind(playingKind());
    if (!voice)
        return;
    NORDA_TRACE << voice->message;
    if (voice == &voices[warningTone])
        mem::SettingsCache::instance()->getValue(mixKey, 0);
    svaudio::AudioService::instance()->setMainAudioStatus(voice->onStart);
}

void BTVoiceSource::stopVtqVoice()
{
    if (const VoiceRow *voice = voiceOfKind(playingKind())) {
        if (voice->logsStop)
            NORDA_TRACE << voice->message;
        svaudio::AudioService::instance()->setMainAudioStatus(voice->onStop);
    }
    setPlayingKind(noVoice);
}

int BTVoiceSource::attribute()
{
    static constexpr int base = 3;
    static constexpr int playing = 4;
    return base | (playingKind() == voiceOfSource(m_type).voiceType ? playing : 0);
}

int BTVoiceSource::keyEvent(KeyEvent *event)
{
    NORDA_TRACE << event->key() << int(event->type());
    return SourceInterface::keyEvent(event);
}

void BTVoiceSource::onAudioFocusChange(int) {}

void BTVoiceSource::handingVTQAudioInterrupt(uchar kind, uchar audioInterruptLocation)
{
    EventHandler *events = EventHandler::instance();
    const int display = events->control()->currentDspl();
    NORDA_TRACE << kind << audioInterruptLocation << display;
    if (display == blockingDisplay)
        return;

    if (kind == 0) {
        for (const VoiceRow &voice : voices)
            events->onEvent(voice.stopEvent);
    } else if (const VoiceRow *voice = voiceOfKind(kind)) {
        setPlayingKind(kind);
        onVtqToMcuCmd(audioInterruptLocation);
        events->onEvent(voice->startEvent);
    }
}

void BTVoiceSource::onVtqToMcuCmd(uchar location)
{
    mem::SettingsCache *cache = mem::SettingsCache::instance();
    cache->setValue(mixKey, 0, 0);
    for (const auto &speaker : speakers) {
        if (location & speaker.location)
            onANDsoundLocation(speaker.mask);
    }
    NORDA_TRACE << "VTQ_Voice_Mix" << cache->getValue(mixKey, 0);
}

void BTVoiceSource::onANDsoundLocation(int bit)
{
    mem::SettingsCache *cache = mem::SettingsCache::instance();
    cache->setValue(mixKey, 0, cache->getValue(mixKey, 0) | bit);
}

void BTVoiceSource::onDelayRestoreMixTimeOut()
{
    NORDA_TRACE << "timer out";
    mcu::McuService::instance()->setMixChannel(allSpeakers, 1);
}

} // namespace norda
