// The climate screen's two zones: the change between them, and the controls that the second one
// has.

#include "norda/vtqservice.h"
#include "translator.h"
#include "ui_norda_vantiq_climate.h"
#include "vantiq_climate_widget.h"

namespace norda {

static const QString frontCaption = QStringLiteral("front");
static const QString rearCaption = QStringLiteral("rear");

void Vantiq_Climate_Widget::onNordadRearPressed()
{
    soundClickedBeep();
    InitByte();
    m_model.pressZoneKey();
    const bool towardsSecond = m_model.zones().isTowardsSecond();
    Translator *texts = Translator::instance();
    m_form->Txt_rear->setText(
        texts->text(towardsSecond ? Translator::ZoneFront : Translator::ZoneRear));
    showPage();
    if (towardsSecond) {
        m_form->key_Steering_wheel_heat_2->hide();
        m_form->key_circulation_2->hide();
        m_form->key_demisting_2->hide();
        m_form->key_wind_direction_2->hide();
    }
    m_form->Txt_rear->setText(towardsSecond ? frontCaption : rearCaption);
    sendBytes();
}

void Vantiq_Climate_Widget::onNordaRearClicked(bool checked)
{
    m_model.zones().click(checked);
    showPage();
    if (checked)
        m_form->tempbar_W->installEventFilter(this);
    else
        m_form->tempbar_W->removeEventFilter(this);
}

void Vantiq_Climate_Widget::showPage()
{
    m_form->stackedWidget->setCurrentIndex(int(m_model.zones().page()));
}

/** @return whether the active zone changed */
bool Vantiq_Climate_Widget::bringUp(Zone zone)
{
    const bool changed = m_model.zones().bringUp(zone);
    showPage();
    if (changed)
        VtqService::instance()->setClimateRearZone(zone == Zone::Second);
    return changed;
}

void Vantiq_Climate_Widget::updateCurrMainUIType()
{
    if (!bringUp(Zone::Front))
        return;
    updateFrontZoneUi();
    m_form->Txt_rear->setText(rearCaption);
}

void Vantiq_Climate_Widget::updateCurrSecondUIType()
{
    if (!bringUp(Zone::Second))
        return;
    updateRearZoneUi();
    m_form->Txt_rear->setText(frontCaption);
}

void Vantiq_Climate_Widget::updateRearZoneUi()
{
    updateRearClimateData0();
    updateRearClimateData1();
    updateRearClimateData2();
}

void Vantiq_Climate_Widget::updateFrontZoneUi() {}

void Vantiq_Climate_Widget::updateRearClimateData0()
{
    applyFeatures0(VtqService::instance()->getRearClimateControlFeatures(0));
}

void Vantiq_Climate_Widget::updateRearClimateData1()
{
    applyFeatures1(VtqService::instance()->getRearClimateControlFeatures(1));
}

void Vantiq_Climate_Widget::updateRearClimateData2() {}

// The front zone shows all its controls whatever the car has: nothing runs these two.
void Vantiq_Climate_Widget::updateFrontClimateData0()
{
    applyFeatures0(VtqService::instance()->getFrontClimateControlFeatures(0));
}

void Vantiq_Climate_Widget::updateFrontClimateData1()
{
    applyFeatures1(VtqService::instance()->getFrontClimateControlFeatures(1));
}

void Vantiq_Climate_Widget::updateBtnVisible(const Features &features, int feature, QWidget *widget)
{
    widget->setVisible(features.value(feature));
}

void Vantiq_Climate_Widget::updateBtnVisible(const Features &features, int feature,
                                             const QList<QWidget *> &manual,
                                             const QList<QWidget *> &autoDual)
{
    for (QWidget *widget : isManual() ? manual : autoDual)
        updateBtnVisible(features, feature, widget);
}

void Vantiq_Climate_Widget::applyFeatures0(const Features &features)
{
    const Ui_norda_vantiq_climate &ui = *m_form;
    updateBtnVisible(features, 2, {ui.tempbar_W, ui.key_temp_next, ui.key_temp_prev}, {});
    updateBtnVisible(features, 0, {},
                     {ui.key_left_temp_next, ui.key_left_temp_prev, ui.Txt_left_temp});
    updateBtnVisible(features, 1, {}, {ui.key_right_temp_next, ui.key_right_temp_prev});
    if (!isManual()) {
        // With a right temperature it is the left text that shows.
        if (features.value(1))
            ui.Txt_left_temp->show();
        else
            ui.Txt_right_temp->hide();
    }
    updateBtnVisible(features, 3, {ui.key_AC_2}, {ui.key_AC});
    updateBtnVisible(features, 4, {ui.key_power_2}, {ui.key_power});
    updateBtnVisible(features, 5, {ui.key_wind_direction_2}, {ui.key_wind_direction});
    updateBtnVisible(features, 6, {ui.key_demisting_2}, {ui.key_demisting});
    updateBtnVisible(features, 7, {ui.key_circulation_2}, {ui.key_circulation});
}

void Vantiq_Climate_Widget::applyFeatures1(const Features &features)
{
    const Ui_norda_vantiq_climate &ui = *m_form;
    updateBtnVisible(features, 0, ui.key_dual);
    // One feature governs the vent key of the one layout and the wheel key of the other.
    updateBtnVisible(features, 1, {ui.key_seat_2}, {ui.key_Steering_wheel_heat});
    updateBtnVisible(features, 2, {ui.key_max_AC_2}, {ui.key_max_AC});
    updateBtnVisible(features, 3, {ui.bkg_air_gear_position_2}, {ui.bkg_air_gear_position});
    updateBtnVisible(features, 4, {ui.key_air_speed_next_2}, {ui.key_air_speed_next});
    updateBtnVisible(features, 5, {ui.key_air_speed_prev_2}, {ui.key_air_speed_prev});
    updateBtnVisible(features, 6, {ui.key_left_seat_AC_2, ui.key_right_seat_AC_2},
                     {ui.key_left_seat_AC, ui.key_right_seat_AC});
    updateBtnVisible(features, 7, {ui.key_left_seat_heat_2, ui.key_right_seat_heat_2},
                     {ui.key_left_seat_heat, ui.key_right_seat_heat});
}

} // namespace norda
