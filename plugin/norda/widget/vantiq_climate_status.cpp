// How the climate screen draws the status list.

#include "debug.h"
#include "ui_norda_vantiq_climate.h"
#include "vantiq_climate_widget.h"

namespace norda {

void Vantiq_Climate_Widget::onNordaNotifyClimateCtrlStatus(const QList<int> &status)
{
    NORDA_TRACE << status;
    m_model.setStatus(status);
    UpdateNordaUI();
}

void Vantiq_Climate_Widget::UpdateNordaUI()
{
    if (isManual())
        showManual(m_model.manualStatus());
    else
        showAutoDual(m_model.autoDualStatus());
}

void Vantiq_Climate_Widget::showAutoDual(const AutoDualStatus &status)
{
    if (status.modes) {
        updateAutoButtonState(status.modes->automatic);
        updateDualButtonState(status.modes->dual);
    }
    updateVentPositionIdentifier(m_model.followVentMode(Layout::AutoDual, status.ventMode));
    m_form->Txt_fork->setText(QString());
    updateFrontDefrosterButtonState(status.frontDefroster);
    updateRearDefrosterButtonState(status.rearDefroster);
    updateHeatedWheelButtonState(status.heatedWheel);
    updateOnOffButtonState(status.system);
    updateAcButtonState(status.airConditioning);
    updateMaxAcButtonState(status.maxAirConditioning);
    updateRecircFreshButtonState(status.recirculation);
    m_form->Txt_left_temp->setText(temperatureText(status.leftTemperature));
    m_form->Txt_right_temp->setText(temperatureText(status.rightTemperature));
    setAutoDualFanmeterSpeeds(status.fan);
    showSeat(true, status.leftSeat);
    showSeat(false, status.rightSeat);
}

void Vantiq_Climate_Widget::showSeat(bool left, int code)
{
    const SeatState seat = seatState(code);
    if (seat.cooled)
        updateCooledButtonState(left, seat.level);
    else
        updateHeatedButtonState(left, seat.level);
}

void Vantiq_Climate_Widget::showManual(const ManualStatus &status)
{
    updateOnOffButtonState(status.system);
    updateAcButtonState(status.airConditioning);
    updateMaxAcButtonState(status.maxAirConditioning);
    setManualFanmeterSpeeds(status.fan);
    setTemperatureValue(status.temperature);
    m_form->Txt_fork->setText(plainTemperatureText(status.temperature));
    updateVentPositionIdentifier(m_model.followVentMode(Layout::Manual, status.ventMode));
    showManualSeat(status.leftSeat, m_form->icon_left_seat_heat_2, m_form->icon_left_seat_AC_2);
    showManualSeat(status.rightSeat, m_form->icon_right_seat_heat_2, m_form->icon_right_seat_AC_2);
}

/** Off turns both images off; otherwise only the kind that is on is drawn. */
void Vantiq_Climate_Widget::showManualSeat(int code, QLabel *heated, QLabel *cooled)
{
    if (code < 0)
        return; // names no image, so both stay
    const SeatState seat = seatState(code);
    if (seat.cooled || code == 0)
        m_images.show(cooled, seatCoolImage(seat.level));
    if (!seat.cooled)
        m_images.show(heated, seatHeatImage(seat.level));
}

void Vantiq_Climate_Widget::updateIconButtonState(QPushButton *key, int state)
{
    const ButtonLook look = buttonLook(state);
    key->setEnabled(look.enabled);
    key->setChecked(look.checked);
    key->setVisible(look.visible);
}

void Vantiq_Climate_Widget::updateTextButtonState(QPushButton *key, int state)
{
    updateIconButtonState(key, state);
}

void Vantiq_Climate_Widget::updateCurrUITypeState(QPushButton *manual, QPushButton *autoDual,
                                                  int state)
{
    updateIconButtonState(isManual() ? manual : autoDual, state);
}

void Vantiq_Climate_Widget::updateCurrUITypeState(QPushButton *autoDual, int state)
{
    if (!isManual())
        updateIconButtonState(autoDual, state);
}

void Vantiq_Climate_Widget::updateOnOffButtonState(int state)
{
    updateCurrUITypeState(m_form->key_power_2, m_form->key_power, state);
}

void Vantiq_Climate_Widget::updateAcButtonState(int state)
{
    updateCurrUITypeState(m_form->key_AC_2, m_form->key_AC, state);
}

void Vantiq_Climate_Widget::updateMaxAcButtonState(int state)
{
    updateCurrUITypeState(m_form->key_max_AC_2, m_form->key_max_AC, state);
}

void Vantiq_Climate_Widget::updateRecircFreshButtonState(int state)
{
    updateCurrUITypeState(m_form->key_circulation_2, m_form->key_circulation, state);
}

void Vantiq_Climate_Widget::updateFanSpeedUpButtonState(int state)
{
    updateCurrUITypeState(m_form->key_air_speed_next_2, m_form->key_air_speed_next, state);
}

void Vantiq_Climate_Widget::updateFanSpeedDownButtonState(int state)
{
    updateCurrUITypeState(m_form->key_air_speed_prev_2, m_form->key_air_speed_prev, state);
}

void Vantiq_Climate_Widget::updateHeatedWheelButtonState(int state)
{
    updateCurrUITypeState(m_form->key_Steering_wheel_heat_2, m_form->key_Steering_wheel_heat,
                          state);
}

void Vantiq_Climate_Widget::updateFrontDefrosterButtonState(int state)
{
    updateCurrUITypeState(m_form->key_wind_direction_2, m_form->key_wind_direction, state);
}

void Vantiq_Climate_Widget::updateRearDefrosterButtonState(int state)
{
    updateCurrUITypeState(m_form->key_demisting_2, m_form->key_demisting, state);
}

void Vantiq_Climate_Widget::updateAutoButtonState(int state)
{
    updateIconButtonState(m_form->key_auto, state);
}

void Vantiq_Climate_Widget::updateDualButtonState(int state)
{
    updateIconButtonState(m_form->key_dual, state);
}

void Vantiq_Climate_Widget::updateHeatedButtonState(bool left, int level)
{
    const Ui_norda_vantiq_climate &ui = *m_form;
    QLabel *const labels[2][2] = {{ui.icon_right_seat_heat, ui.icon_left_seat_heat},
                                  {ui.icon_right_seat_heat_2, ui.icon_left_seat_heat_2}};
    m_images.show(labels[isManual()][left], seatHeatImage(m_model.setSeatLevel(level)));
}

void Vantiq_Climate_Widget::updateCooledButtonState(bool left, int level)
{
    const Ui_norda_vantiq_climate &ui = *m_form;
    QLabel *const labels[2][2] = {{ui.icon_right_seat_AC, ui.icon_left_seat_AC},
                                  {ui.icon_right_seat_AC_2, ui.icon_left_seat_AC_2}};
    m_images.show(labels[isManual()][left], seatCoolImage(m_model.setSeatLevel(level)));
}

void Vantiq_Climate_Widget::updateLHeatedSeatButtonState(int state)
{
    updateHeatedButtonState(true, state);
}

void Vantiq_Climate_Widget::updateRHeatedSeatButtonState(int state)
{
    updateHeatedButtonState(false, state);
}

void Vantiq_Climate_Widget::updateLCooledSeatButtonState(int state)
{
    updateCooledButtonState(true, state);
}

void Vantiq_Climate_Widget::updateRCooledSeatButtonState(int state)
{
    updateCooledButtonState(false, state);
}

void Vantiq_Climate_Widget::showFanLevel(QLabel *meter, int level)
{
    m_images.show(meter, fanImage(level));
}

void Vantiq_Climate_Widget::setManualFanmeterSpeeds(int speed)
{
    showFanLevel(m_form->bkg_air_gear_position_2, fanLevel(speed));
}

void Vantiq_Climate_Widget::setAutoDualFanmeterSpeeds(int speed)
{
    showFanLevel(m_form->bkg_air_gear_position, fanLevel(speed));
}

void Vantiq_Climate_Widget::setTemperatureValue(int value)
{
    QLabel *marker = m_form->bkg_temp_cusl;
    marker->move(temperatureMarkerX(value, m_form->bkg_temp_sliders->width(), marker->width()),
                 marker->y());
}

void Vantiq_Climate_Widget::showIcon(QAbstractButton *key, const Level_Path *images)
{
    if (images)
        m_images.showIcon(key, images[0].path, images[1].path);
}

void Vantiq_Climate_Widget::updateVentPositionIdentifier(int code)
{
    const int row = m_model.setVentPosition(code);
    showIcon(isManual() ? m_form->key_seat_2 : m_form->key_seat, ventImages(row));
}

void Vantiq_Climate_Widget::updateVentSpeedIdentifier(int, int speed)
{
    if (isManual())
        setManualFanmeterSpeeds(speed);
    else
        setAutoDualFanmeterSpeeds(speed);
}

void Vantiq_Climate_Widget::updateRecircFreshState(int state)
{
    showIcon(m_form->key_circulation_2, recirculationImages(state));
}

} // namespace norda
