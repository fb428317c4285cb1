#include "cm/reverservideoinservice.h"
#include "hostactions.h"
#include "mem/settingsfunc.h"
#include "mem/settingsutil.h"
#include "spplfctrl/spplatformcontrol.h"
#include "ui_norda_parking.h"
#include "vantiq_parking_widget.h"

// The keys that lead away from the parking screen: camera, split view and module settings.

namespace norda {

static mem::SettingsUtil *settings()
{
    return mem::SettingsUtil::instance();
}

void Vantiq_Parking_Widget::onEnter()
{
    m_form->key_split->setChecked(settings()->getVantiqSplit());
    m_form->key_camera->setEnabled(settings()->getRearInput() || settings()->getFrontInput());
    DataScreen::onEnter();
}

void Vantiq_Parking_Widget::resume()
{
    m_form->key_camera->setEnabled(settings()->getCameraInput() != 0);
    init_Zone();
    DataScreen::onEnter();
}

void Vantiq_Parking_Widget::onSplitClicked()
{
    static constexpr int moduleInput = 0;
    static constexpr int splitFlag = 256;
    soundClickedBeep();
    const bool split = !settings()->getVantiqSplit();
    m_form->key_split->setChecked(split);
    settings()->setVantiqSplit(split, true);

    settings()->getVantiqSplit();
    spplfctrl::SPPlatformControl::GetInstance()->setVideoPath(moduleInput, splitFlag);
    cm::ReverserVideoInService::getInstance()->updateWarning();
}

void Vantiq_Parking_Widget::onCameraClicked()
{
    soundClickedBeep();
    settings()->setVantiqCamera(true, true);
    mem::SettingsFunc *store = mem::SettingsFunc::instance();
    // The host keeps the keys: a QStringLiteral would point into the library.
    store->setValue(QLatin1String("Camera_Ignore_Spilt"), false, false, true);
    const bool frontOnly = settings()->getFrontInput() && !settings()->getRearInput();
    store->setValue(QLatin1String("Camera_ISRear"), false, frontOnly, true);
    navigateTo(Qx::TouchCamera);
}

void Vantiq_Parking_Widget::onNodraSettingsClicked()
{
    soundClickedBeep();
    navigateTo(Qx::TouchSettings);
    requestMenu();
}

/** For the host: no key of the screen leads here. */
void Vantiq_Parking_Widget::onSettingsClicked()
{
    soundClickedBeep();
    settings()->setVantiqSplit(!settings()->getVantiqSplit(), true);
    send(&VtqAdaptor::parkingSettings);
}

} // namespace norda
