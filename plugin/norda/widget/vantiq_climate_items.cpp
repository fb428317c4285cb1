// How the climate screen draws single items, for hosts that connect them: each slot brings up the
// layout of its zone first, then redraws.

#include "ui_norda_vantiq_climate.h"
#include "vantiq_climate_widget.h"

namespace norda {

void Vantiq_Climate_Widget::showManualTemperature(int up, int down, int temperature)
{
    updateIconButtonState(m_form->key_temp_next, up);
    updateIconButtonState(m_form->key_temp_prev, down);
    setTemperatureValue(temperature);
}

void Vantiq_Climate_Widget::onManClimateTempNotify(int up, int down, int temperature)
{
    updateCurrMainUIType();
    showManualTemperature(up, down, temperature);
}

void Vantiq_Climate_Widget::onSecondManClimateTempNotify(int up, int down, int temperature)
{
    updateCurrSecondUIType();
    showManualTemperature(up, down, temperature);
}

void Vantiq_Climate_Widget::onAutoClimateTempNotify(const QMap<int, QVariant> &)
{
    updateCurrMainUIType();
}

void Vantiq_Climate_Widget::onSecondAutoClimateTempNotify(const QMap<int, QVariant> &)
{
    updateCurrSecondUIType();
}

void Vantiq_Climate_Widget::showDefrosters(int front, int rear)
{
    updateFrontDefrosterButtonState(front);
    updateRearDefrosterButtonState(rear);
}

void Vantiq_Climate_Widget::onDefrosterStatusNotify(int front, int rear)
{
    updateCurrMainUIType();
    showDefrosters(front, rear);
}

void Vantiq_Climate_Widget::onSecondDefrosterStatusNotify(int front, int rear)
{
    updateCurrSecondUIType();
    showDefrosters(front, rear);
}

void Vantiq_Climate_Widget::showSeats(int leftHeated, int rightHeated, int leftCooled,
                                      int rightCooled)
{
    updateLCooledSeatButtonState(leftCooled);
    updateRCooledSeatButtonState(rightCooled);
    updateLHeatedSeatButtonState(leftHeated);
    updateRHeatedSeatButtonState(rightHeated);
}

void Vantiq_Climate_Widget::onHeatedCooledSeatsStatusNotify(int leftHeated, int rightHeated,
                                                            int leftCooled, int rightCooled)
{
    updateCurrMainUIType();
    showSeats(leftHeated, rightHeated, leftCooled, rightCooled);
}

void Vantiq_Climate_Widget::onSecondHeatedCooledSeatsStatusNotify(int leftHeated, int rightHeated,
                                                                  int leftCooled, int rightCooled)
{
    updateCurrSecondUIType();
    showSeats(leftHeated, rightHeated, leftCooled, rightCooled);
}

void Vantiq_Climate_Widget::showVent(int position, int mode, int speed)
{
    updateVentPositionIdentifier(position);
    updateVentSpeedIdentifier(mode, speed);
}

void Vantiq_Climate_Widget::onVentStatusNotify(int position, int mode, int speed)
{
    updateCurrMainUIType();
    showVent(position, mode, speed);
}

void Vantiq_Climate_Widget::onSecondVentStatusNotify(int position, int mode, int speed)
{
    updateCurrSecondUIType();
    showVent(position, mode, speed);
}

void Vantiq_Climate_Widget::onVentStatusPassengerNotify(int position, int, int)
{
    updateCurrMainUIType();
    updateVentPositionIdentifier(position);
}

void Vantiq_Climate_Widget::onSecondVentStatusPassengerNotify(int position, int, int)
{
    updateCurrSecondUIType();
    updateVentPositionIdentifier(position);
}

void Vantiq_Climate_Widget::onClimateCtrlStatusNotify(int, int, int, int, int, int, int, int)
{
    updateCurrMainUIType();
}

void Vantiq_Climate_Widget::onSecondClimateCtrlStatusNotify(int ac, int onOff, int recirc, int dual,
                                                            int autoState, int maxAc, int fanUp,
                                                            int fanDown)
{
    updateCurrSecondUIType();
    updateAcButtonState(ac);
    updateOnOffButtonState(onOff);
    updateRecircFreshButtonState(recirc);
    updateMaxAcButtonState(maxAc);
    updateAutoButtonState(autoState);
    updateDualButtonState(dual);
    updateFanSpeedUpButtonState(fanUp);
    updateFanSpeedDownButtonState(fanDown);
}

void Vantiq_Climate_Widget::showRearZoneButton(int state)
{
    static constexpr int withoutCaption = 4;
    updateTextButtonState(m_form->key_rear, state);
    m_form->Txt_rear->setVisible(state != withoutCaption);
}

void Vantiq_Climate_Widget::onRearZoneButtonStatusNotify(int state)
{
    updateCurrMainUIType();
    showRearZoneButton(state);
}

void Vantiq_Climate_Widget::onSecondRearZoneButtonStatusNotify(int state)
{
    updateCurrSecondUIType();
    showRearZoneButton(state);
}

void Vantiq_Climate_Widget::onCliTopBarTextNotify(const QString &text)
{
    updateCurrMainUIType();
    m_form->Txt_fork->setText(text);
}

void Vantiq_Climate_Widget::onSecondCliTopBarTextNotify(const QString &text)
{
    updateCurrSecondUIType();
    m_form->Txt_fork->setText(text);
}

void Vantiq_Climate_Widget::onHeatedSteeringWheelNotify(int state)
{
    updateCurrMainUIType();
    updateHeatedWheelButtonState(state);
}

void Vantiq_Climate_Widget::onSecondHeatedSteeringWheelNotify(int state)
{
    updateCurrSecondUIType();
    updateHeatedWheelButtonState(state);
}

} // namespace norda
