// How the climate screen draws the status list.

#include "debug.h"
#include "ui_norda_vantiq_climate.h"
#include "vantiq_climate_widget.h"

namespace norda {

// ---- The status list ----------------------------------------------------------------------------

void Vantiq_Climate_Widget::onNordaNotifyClimateCtrlStatus(const QList<int> &status)
{
    NORDA_TRACE << status;
    m_status = climateStatusMap(status);
    m_seats = {m_status[NordaClimateVaule::LeftSeat], m_status[NordaClimateVaule::RightSeat]};
    m_manualSeats = {m_status[NordaClimateVaule::ManualLeftSeat],
                     m_status[NordaClimateVaule::ManualRightSeat]};
    UpdateNordaUI();
}

void Vantiq_Climate_Widget::UpdateNordaUI()
{
    if (m_shownUiType == AutoDualLayout)
        updateAutoDualUi();
    else if (m_shownUiType == ManualLayout)
        updateManualUi();
}

void Vantiq_Climate_Widget::updateAutoDualUi()
{
    static constexpr int rearDefrosterBit = 0x01;
    static constexpr int heatedWheelBit = 0x02;
    using Value = NordaClimateVaule;

    if (const auto modes = autoDual(m_status[Value::AutoDual])) {
        updateAutoButtonState(modes->automatic);
        updateDualButtonState(modes->dual);
    }
    followVentMode(m_status[Value::VentMode], &m_ventIndex);
    m_form->Txt_fork->setText(QString());

    const int heating = m_status[Value::HeatingBits];
    updateFrontDefrosterButtonState(m_status[Value::FrontDefroster]);
    updateRearDefrosterButtonState((heating & rearDefrosterBit) != 0);
    updateHeatedWheelButtonState((heating & heatedWheelBit) != 0);
    updateOnOffButtonState(m_status[Value::System]);
    updateAcButtonState(m_status[Value::AirConditioning]);
    updateMaxAcButtonState(m_status[Value::MaxAirConditioning]);
    updateRecircFreshButtonState(m_status[Value::AirSource] == 0);

    m_temperatures = {m_status[Value::LeftTemperature], m_status[Value::RightTemperature]};
    m_form->Txt_left_temp->setText(temperatureText(m_temperatures[Left]));
    m_form->Txt_right_temp->setText(temperatureText(m_temperatures[Right]));
    setAutoDualFanmeterSpeeds(m_status[Value::Fan]);

    for (const Side side : {Left, Right}) {
        const SeatState seat = seatState(m_seats[side]);
        if (seat.cooled)
            updateCooledButtonState(side == Left, seat.level);
        else
            updateHeatedButtonState(side == Left, seat.level);
    }
}

void Vantiq_Climate_Widget::updateManualUi()
{
    using Value = NordaClimateVaule;
    updateOnOffButtonState(m_status[Value::ManualSystem]);
    updateAcButtonState(m_status[Value::ManualAirConditioning]);
    updateMaxAcButtonState(m_status[Value::ManualMaxAirConditioning]);
    setManualFanmeterSpeeds(m_status[Value::ManualFan]);
    const int temperature = m_status[Value::ManualTemperature];
    setTemperatureValue(temperature);
    m_form->Txt_fork->setText(plainTemperatureText(temperature));
    followVentMode(m_status[Value::ManualVentMode], &m_manualVentIndex);
    drawManualSeat(m_manualSeats[Left], m_form->icon_left_seat_heat_2, m_form->icon_left_seat_AC_2);
    drawManualSeat(m_manualSeats[Right], m_form->icon_right_seat_heat_2,
                   m_form->icon_right_seat_AC_2);
}

/** Off turns both images off; otherwise only the kind that is on is drawn. */
void Vantiq_Climate_Widget::drawManualSeat(int code, QLabel *heated, QLabel *cooled)
{
    if (code < 0)
        return; // names no image, so both stay
    const SeatState seat = seatState(code);
    if (seat.cooled || code == 0)
        m_images.show(cooled, seatCoolImage(seat.level));
    if (!seat.cooled)
        m_images.show(heated, seatHeatImage(seat.level));
}

void Vantiq_Climate_Widget::followVentMode(int statusValue, int *index)
{
    const VentMode mode = ventMode(statusValue);
    *index = mode.index.value_or(*index);
    updateVentPositionIdentifier(mode.position);
}

// ---- Controls -----------------------------------------------------------------------------------

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
    if (m_shownUiType == ManualLayout)
        updateIconButtonState(manual, state);
    else if (m_shownUiType == AutoDualLayout)
        updateIconButtonState(autoDual, state);
}

void Vantiq_Climate_Widget::updateCurrUITypeState(QPushButton *autoDual, int state)
{
    if (activeUiType() == AutoDualLayout)
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

static constexpr bool isSeatLevel(int level)
{
    return level >= 0 && level <= 3;
}

void Vantiq_Climate_Widget::updateHeatedButtonState(bool left, int level)
{
    const Ui_norda_vantiq_climate &ui = *m_form;
    m_seatLevel = isSeatLevel(level) ? level : m_seatLevel;
    QLabel *const labels[2][2] = {{ui.icon_right_seat_heat, ui.icon_left_seat_heat},
                                  {ui.icon_right_seat_heat_2, ui.icon_left_seat_heat_2}};
    m_images.show(labels[activeUiType() == ManualLayout][left], seatHeatImage(m_seatLevel));
}

void Vantiq_Climate_Widget::updateCooledButtonState(bool left, int level)
{
    const Ui_norda_vantiq_climate &ui = *m_form;
    m_seatLevel = isSeatLevel(level) ? level : m_seatLevel;
    QLabel *const labels[2][2] = {{ui.icon_right_seat_AC, ui.icon_left_seat_AC},
                                  {ui.icon_right_seat_AC_2, ui.icon_left_seat_AC_2}};
    m_images.show(labels[activeUiType() == ManualLayout][left], seatCoolImage(m_seatLevel));
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

const QIcon &Vantiq_Climate_Widget::icon(const Level_Path *images)
{
    QIcon &made = m_icons[images[0].path];
    if (made.isNull()) {
        made.addPixmap(m_images.pixmap(images[0].path), QIcon::Normal);
        made.addPixmap(m_images.pixmap(images[1].path), QIcon::Selected);
    }
    return made;
}

void Vantiq_Climate_Widget::showIcon(QAbstractButton *key, const Level_Path *images)
{
    if (!images)
        return;
    const QIcon &shown = icon(images);
    if (key->icon().cacheKey() != shown.cacheKey())
        key->setIcon(shown);
}

void Vantiq_Climate_Widget::updateVentPositionIdentifier(int code)
{
    m_zone = FrontZone; // without telling the service
    m_ventRow = ventRow(code).value_or(m_ventRow);
    showIcon(m_mainUiType == ManualLayout ? m_form->key_seat_2 : m_form->key_seat,
             ventImages(m_ventRow));
}

void Vantiq_Climate_Widget::updateVentSpeedIdentifier(int mode, int speed)
{
    Q_UNUSED(mode)
    if (activeUiType() == ManualLayout)
        setManualFanmeterSpeeds(speed);
    else
        setAutoDualFanmeterSpeeds(speed);
}

void Vantiq_Climate_Widget::updateRecircFreshState(int state)
{
    showIcon(m_form->key_circulation_2, recirculationImages(state));
}

} // namespace norda
