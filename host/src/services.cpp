// The small services.

#include "audiomanager.h"
#include "calllog.h"
#include "cm/reverservideoinservice.h"
#include "cm/statusbarcontrol.h"
#include "eventhandler.h"
#include "iaudiofocuschangelistener.h"
#include "mcu/mcuservice.h"
#include "mcumanager.h"
#include "norda/vtqservice.h"
#include "spplfctrl/spplatformcontrol.h"
#include "srcdsplctrl.h"
#include "svaudio/audioservice.h"

AudioManager::AudioManager() = default;

AudioManager *AudioManager::instance()
{
    static auto *const manager = new AudioManager;
    return manager;
}

int AudioManager::requestAudioFocus(int stream, int duration, IAudioFocusChangeListener *listener)
{
    CallLog::report("AudioManager::requestAudioFocus", stream, duration,
                    listener ? listener->clientId() : QString());
    return m_focusResult;
}

void AudioManager::setFocusResult(int result)
{
    m_focusResult = result;
}

namespace svaudio {

AudioService::AudioService() = default;

AudioService *AudioService::instance()
{
    static auto *const service = new AudioService;
    return service;
}

void AudioService::doBeep(int tone)
{
    CallLog::report("svaudio::AudioService::doBeep", tone);
    emit beeped(tone);
}

void AudioService::setMainAudioSource(SVAudio_source_id_e source, bool fade)
{
    CallLog::report("svaudio::AudioService::setMainAudioSource", source, fade);
}

void AudioService::setMainAudioStatus(SVAudio_status_id_e status)
{
    CallLog::report("svaudio::AudioService::setMainAudioStatus", status);
}

} // namespace svaudio

namespace mcu {

McuService::McuService() = default;

McuService *McuService::instance()
{
    static auto *const service = new McuService;
    return service;
}

void McuService::setMixChannel(unsigned char channels, unsigned char on)
{
    CallLog::report("mcu::McuService::setMixChannel", channels, on);
}

} // namespace mcu

McuManager::McuManager() = default;

McuManager *McuManager::instance()
{
    static auto *const manager = new McuManager;
    return manager;
}

void McuManager::triggerBeep(int tone)
{
    CallLog::report("McuManager::triggerBeep", tone);
    emit svaudio::AudioService::instance()->beeped(tone);
}

SrcDsplCtrl::SrcDsplCtrl(QObject *parent) : QObject(parent) {}

int SrcDsplCtrl::currentSrc() const
{
    CallLog::report("SrcDsplCtrl::currentSrc");
    return m_source;
}

int SrcDsplCtrl::currentDspl() const
{
    CallLog::report("SrcDsplCtrl::currentDspl");
    return m_display;
}

EventHandler::EventHandler() : m_control(new SrcDsplCtrl(this)) {}

EventHandler *EventHandler::instance()
{
    static auto *const handler = new EventHandler;
    return handler;
}

void EventHandler::onEvent(int event)
{
    CallLog::report("EventHandler::onEvent", event);
    emit raised(event);
}

namespace cm {

StatusBarControl::StatusBarControl() = default;

StatusBarControl *StatusBarControl::instance()
{
    static auto *const control = new StatusBarControl;
    return control;
}

void StatusBarControl::sethide(bool hidden)
{
    CallLog::report("cm::StatusBarControl::sethide", hidden);
    if (hidden == m_hidden)
        return;
    m_hidden = hidden;
    emit hiddenChanged(hidden);
}

ReverserVideoInService::ReverserVideoInService() = default;

ReverserVideoInService *ReverserVideoInService::getInstance()
{
    static auto *const service = new ReverserVideoInService;
    return service;
}

void ReverserVideoInService::updateWarning()
{
    CallLog::report("cm::ReverserVideoInService::updateWarning");
    emit warningUpdated();
}

} // namespace cm

namespace spplfctrl {

SPPlatformControl::SPPlatformControl() : m_audioFirmwareVersion("AUDIO_FW_2.4.17") {}

SPPlatformControl *SPPlatformControl::GetInstance()
{
    static auto *const control = new SPPlatformControl;
    return control;
}

void SPPlatformControl::setVideoPath(int input, int flags)
{
    CallLog::report("spplfctrl::SPPlatformControl::setVideoPath", input, flags);
    emit videoPathChanged(input, flags);
}

const char *SPPlatformControl::getAudioFirmwareVersion()
{
    CallLog::report("spplfctrl::SPPlatformControl::getAudioFirmwareVersion");
    return m_audioFirmwareVersion.constData();
}

void SPPlatformControl::setAudioFirmwareVersion(const QString &version)
{
    m_audioFirmwareVersion = version.toUtf8();
}

} // namespace spplfctrl

namespace norda {

static QMap<int, bool> allPresent(int first, int last)
{
    QMap<int, bool> features;
    for (int feature = first; feature <= last; ++feature)
        features.insert(feature, true);
    return features;
}

VtqService::VtqService() : m_parkingZones(allPresent(1, 8))
{
    m_frontFeatures = {{0, allPresent(0, 7)}, {1, allPresent(0, 7)}};
    m_rearFeatures = m_frontFeatures;
}

VtqService *VtqService::instance()
{
    static auto *const service = new VtqService;
    return service;
}

QMap<int, bool> VtqService::getFrontClimateControlFeatures(int group)
{
    CallLog::report("norda::VtqService::getFrontClimateControlFeatures", group);
    return m_frontFeatures.value(group);
}

QMap<int, bool> VtqService::getRearClimateControlFeatures(int group)
{
    CallLog::report("norda::VtqService::getRearClimateControlFeatures", group);
    return m_rearFeatures.value(group);
}

void VtqService::setClimateRearZone(bool rear)
{
    CallLog::report("norda::VtqService::setClimateRearZone", rear);
}

QMap<int, bool> VtqService::getParkingAssistZones()
{
    CallLog::report("norda::VtqService::getParkingAssistZones");
    return m_parkingZones;
}

void VtqService::syncRadioStatus(unsigned char source, unsigned char kind, unsigned char volume,
                                 unsigned char state, unsigned char left, unsigned char right)
{
    CallLog::report("norda::VtqService::syncRadioStatus", source, kind, volume, state, left, right);
}

void VtqService::setFrontClimateControlFeatures(int group, const QMap<int, bool> &features)
{
    m_frontFeatures.insert(group, features);
}

void VtqService::setRearClimateControlFeatures(int group, const QMap<int, bool> &features)
{
    m_rearFeatures.insert(group, features);
}

void VtqService::setParkingAssistZones(const QMap<int, bool> &zones)
{
    m_parkingZones = zones;
}

} // namespace norda
