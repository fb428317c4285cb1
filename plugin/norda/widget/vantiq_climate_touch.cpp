// What the climate screen sends: the byte map of a touch, the direct values of a drag, and the
// single commands that hosts may connect.

#include "mcumanager.h"
#include "norda/climate/singlecommands.h"
#include "ui_norda_vantiq_climate.h"
#include "vantiq_climate_widget.h"

#include <QMouseEvent>

namespace norda {

void Vantiq_Climate_Widget::InitByte()
{
    m_model.clearBytes();
}

void Vantiq_Climate_Widget::sendBytes()
{
    send(&VtqAdaptor::NordatriggerRearDefrostButton, m_model.bytes());
}

void Vantiq_Climate_Widget::touch(ClimateGroup group, int id)
{
    soundClickedBeep();
    InitByte();
    m_model.touch(group, id);
    sendBytes();
}

void Vantiq_Climate_Widget::onNordaManualTextBtnClicked(int id)
{
    touch(ClimateGroup::ManualText, id);
}

void Vantiq_Climate_Widget::onNordaManualIconBtnClicked(int id)
{
    touch(ClimateGroup::ManualIcon, id);
}

void Vantiq_Climate_Widget::OonNordaAutoDualTextBtnClicked(int id)
{
    touch(ClimateGroup::AutoDualText, id);
}

void Vantiq_Climate_Widget::OnNordaDualButtonClicked(int id)
{
    touch(ClimateGroup::AutoDualIcon, id);
}

/** Whether an event belongs to a drag with the left button. */
static bool isDragStep(const QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
        return static_cast<const QMouseEvent *>(event)->button() == Qt::LeftButton;
    case QEvent::MouseMove:
        return static_cast<const QMouseEvent *>(event)->buttons() & Qt::LeftButton;
    default:
        return false;
    }
}

bool Vantiq_Climate_Widget::eventFilter(QObject *watched, QEvent *event)
{
    if (!isDragStep(event))
        return false;
    const int x = static_cast<QMouseEvent *>(event)->x();
    if (watched == m_form->tempbar_W)
        dragTemperature(event->type(), x);
    else if (watched == m_form->bkg_air_gear_position_2)
        dragManualFan(event->type(), x);
    else
        dragAutoDualFan(event->type(), x);
    return false;
}

void Vantiq_Climate_Widget::dragTemperature(QEvent::Type step, int x)
{
    const bool released = step == QEvent::MouseButtonRelease;
    setTemperaturePosition(step, x, released);
    if (released)
        onTemperature();
}

static void beepOnPress(QEvent::Type step)
{
    if (step == QEvent::MouseButtonPress)
        McuManager::instance()->triggerBeep(0);
}

void Vantiq_Climate_Widget::dragManualFan(QEvent::Type step, int x)
{
    const bool released = step == QEvent::MouseButtonRelease;
    beepOnPress(step);
    setManualFanmeterPixmap(x, !released);
    if (released)
        onManualFan();
}

void Vantiq_Climate_Widget::dragAutoDualFan(QEvent::Type step, int x)
{
    const bool released = step == QEvent::MouseButtonRelease;
    beepOnPress(step);
    setAutoDualFanmeterPixmap(x, !released);
    if (released)
        onAutoFan();
}

void Vantiq_Climate_Widget::setTemperaturePosition(int eventType, int x, bool)
{
    QLabel *marker = m_form->bkg_temp_cusl;
    if (eventType == QEvent::MouseButtonPress)
        m_temperatureDrag.press(x, marker->x(), marker->width());
    else if (eventType == QEvent::MouseMove && m_temperatureDrag.move(x))
        marker->move(x, marker->y());
    else if (eventType == QEvent::MouseButtonRelease)
        m_temperatureDrag.release();
}

void Vantiq_Climate_Widget::onTemperature()
{
    sendToZone(&VtqAdaptor::manTempValue, &VtqAdaptor::secoundmanTempValue, m_temperatureDrag.raw(),
               true);
}

void Vantiq_Climate_Widget::setManualFanmeterPixmap(int x, bool)
{
    const FanPlace place = fanPlace(x);
    m_rawManualFan = place.raw.value_or(m_rawManualFan);
    showFanLevel(m_form->bkg_air_gear_position_2, place.level);
}

// Dragged on the one meter, the other one moves; what is sent is this layout's own raw value.
void Vantiq_Climate_Widget::setAutoDualFanmeterPixmap(int x, bool pressed)
{
    setManualFanmeterPixmap(x, pressed);
}

void Vantiq_Climate_Widget::onManualFan()
{
    sendToZone(&VtqAdaptor::fanDirectValue, &VtqAdaptor::secoundfanDirectValue, m_rawManualFan,
               true);
}

void Vantiq_Climate_Widget::onAutoFan()
{
    static constexpr int rawAutoFan = 0; // a drag on either meter sets the manual value
    sendToZone(&VtqAdaptor::fanDirectValue, &VtqAdaptor::secoundfanDirectValue, rawAutoFan, true);
}

void Vantiq_Climate_Widget::pressSingle(ClimateGroup group, int id)
{
    if (const auto key = customKey(group, id)) {
        sendCustomControl(*key, TouchAction::Pressed);
    } else if (const HeldCommand *held = heldCommand(group, id)) {
        soundClickedBeep();
        sendToZone(held->front, held->second, true, false);
    }
}

void Vantiq_Climate_Widget::releaseSingle(ClimateGroup group, int id)
{
    if (const auto key = customKey(group, id))
        sendCustomControl(*key, TouchAction::Released);
    else if (const HeldCommand *held = heldCommand(group, id))
        sendToZone(held->front, held->second, false, true);
}

void Vantiq_Climate_Widget::clickSingle(ClimateGroup group, int id)
{
    const ClickedCommand *clicked = clickedCommand(group, id);
    if (clicked || customKey(group, id))
        soundClickedBeep();
    if (clicked)
        sendToZone(clicked->front, clicked->second, true);
}

void Vantiq_Climate_Widget::onManualIconBtnPressed(int id)
{
    pressSingle(ClimateGroup::ManualIcon, id);
}

void Vantiq_Climate_Widget::onManualIconBtnClicked(int id)
{
    clickSingle(ClimateGroup::ManualIcon, id);
}

void Vantiq_Climate_Widget::onManualIconBtnReleased(int id)
{
    releaseSingle(ClimateGroup::ManualIcon, id);
}

void Vantiq_Climate_Widget::onManualTextBtnPressed(int id)
{
    pressSingle(ClimateGroup::ManualText, id);
}

void Vantiq_Climate_Widget::onManualTextBtnClicked(int id)
{
    clickSingle(ClimateGroup::ManualText, id);
}

void Vantiq_Climate_Widget::onManualTextBtnReleased(int id)
{
    releaseSingle(ClimateGroup::ManualText, id);
}

void Vantiq_Climate_Widget::onAutoDualIconBtnPressed(int id)
{
    pressSingle(ClimateGroup::AutoDualIcon, id);
}

void Vantiq_Climate_Widget::onAutoDualIconBtnClicked(int id)
{
    clickSingle(ClimateGroup::AutoDualIcon, id);
}

void Vantiq_Climate_Widget::onAutoDualIconBtnReleased(int id)
{
    releaseSingle(ClimateGroup::AutoDualIcon, id);
}

void Vantiq_Climate_Widget::onAutoDualTextBtnPressed(int id)
{
    pressSingle(ClimateGroup::AutoDualText, id);
}

void Vantiq_Climate_Widget::onAutoDualTextBtnClicked(int id)
{
    clickSingle(ClimateGroup::AutoDualText, id);
}

void Vantiq_Climate_Widget::onAutoDualTextBtnReleased(int id)
{
    releaseSingle(ClimateGroup::AutoDualText, id);
}

void Vantiq_Climate_Widget::onRearPressed()
{
    soundClickedBeep();
    sendToZone(&VtqAdaptor::rearZoneButton, &VtqAdaptor::secoundrearZoneButton, true, false);
}

void Vantiq_Climate_Widget::onRearClicked() {}

void Vantiq_Climate_Widget::onRearReleased()
{
    sendToZone(&VtqAdaptor::rearZoneButton, &VtqAdaptor::secoundrearZoneButton, false, true);
}

void Vantiq_Climate_Widget::onCloseClicked()
{
    soundClickedBeep();
}

} // namespace norda
