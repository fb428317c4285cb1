// The small services.

#include "audiomanager.h"
#include "calllog.h"
#include "cm/reverservideoinservice.h"
#include "cm/statusbarcontrol.h"
#include "eventhandler.h"
#include "iaudiofocuschangelistener.h"
#include "mcu/mcuservice.h"
#include "mcumanager.h"
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
