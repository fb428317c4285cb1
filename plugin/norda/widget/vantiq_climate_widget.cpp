#include "vantiq_climate_widget.h"

#include "customcontrols.h"
#include "debug.h"
#include "norda/vtqservice.h"
#include "slabelmanager.h"
#include "translator.h"
#include "ui_norda_vantiq_climate.h"

#include <QButtonGroup>

namespace norda {

using Screen = Vantiq_Climate_Widget;

static constexpr int navigationPage = 2;
static constexpr ScreenCommands frontCommands = {
    &VtqAdaptor::climateListBack,        &VtqAdaptor::climateListPrevious,
    &VtqAdaptor::climateListNext,        &VtqAdaptor::climateSettings,
    &VtqAdaptor::requestMainClimateInfo, &VtqAdaptor::customCtrlsButton,
};
static constexpr ScreenCommands secondCommands = {
    &VtqAdaptor::secoundclimateListBack,   &VtqAdaptor::secoundclimateListPrevious,
    &VtqAdaptor::secoundclimateListNext,   &VtqAdaptor::secoundclimateSettings,
    &VtqAdaptor::requestSecondClimateInfo, &VtqAdaptor::secoundcustomCtrlsButton,
};

static const QString frontCaption = QStringLiteral("front");
static const QString rearCaption = QStringLiteral("rear");

Vantiq_Climate_Widget::Vantiq_Climate_Widget(QWidget *parent)
    : DataScreen(navigationPage, frontCommands, parent)
    , m_form(std::make_unique<Ui_norda_vantiq_climate>())
{
    m_form->setupUi(this);
    init_UI();

    connect(adaptor(), &VtqAdaptor::secondclimateType, this, &Screen::onSecondClimateType);
    connect(adaptor(), &VtqAdaptor::climateType, this, &Screen::onClimateType);
    onSecondClimateType();
    onClimateType();

    m_form->stackedWidget->setCurrentWidget(m_form->climate_AutoDual);
    m_form->climate_AutoDual->show();
    m_form->key_auto->show();
    m_form->key_dual->show();
    connect(adaptor(), &VtqAdaptor::NordaClimateCtrlStatusNotify, this,
            &Screen::onNordaNotifyClimateCtrlStatus, Qt::UniqueConnection);
    updateCooledButtonState(false, 0);
    updateCooledButtonState(true, 0);
    InitNordaUi();
}

Vantiq_Climate_Widget::~Vantiq_Climate_Widget()
{
    disconnectVtqAdaptor();
    seconddisconnectVtqAdaptor();
}

QButtonGroup *Vantiq_Climate_Widget::groupKeys(const QList<QAbstractButton *> &keys)
{
    auto *group = new QButtonGroup(this);
    group->setExclusive(false);
    for (QAbstractButton *key : keys) {
        key->setCheckable(true);
        group->addButton(key, group->buttons().size());
    }
    return group;
}

void Vantiq_Climate_Widget::init_UI()
{
    const Ui_norda_vantiq_climate &ui = *m_form;
    QButtonGroup *manualText = groupKeys({ui.key_AC_2, ui.key_max_AC_2, ui.key_P1_2, ui.key_P2_2});
    QButtonGroup *manualIcon = groupKeys(
        {ui.key_temp_prev, ui.key_air_speed_prev_2, ui.key_temp_next, ui.key_air_speed_next_2,
         ui.key_left_seat_heat_2, ui.key_right_seat_heat_2, ui.key_left_seat_AC_2,
         ui.key_right_seat_AC_2, ui.key_seat_2, ui.key_circulation_2, ui.key_Steering_wheel_heat_2,
         ui.key_power_2, ui.key_wind_direction_2, ui.key_demisting_2});
    QButtonGroup *autoDualText =
        groupKeys({ui.key_auto, ui.key_dual, ui.key_AC, ui.key_max_AC, ui.key_P1, ui.key_P2});
    QButtonGroup *autoDualIcon =
        groupKeys({ui.key_left_temp_next, ui.key_right_temp_next, ui.key_left_temp_prev,
                   ui.key_right_temp_prev, ui.key_air_speed_prev, ui.key_air_speed_next,
                   ui.key_seat, ui.key_circulation, ui.key_Steering_wheel_heat, ui.key_power,
                   ui.key_left_seat_heat, ui.key_right_seat_heat, ui.key_left_seat_AC,
                   ui.key_right_seat_AC, ui.key_wind_direction, ui.key_demisting});
    connect(manualText, &QButtonGroup::idClicked, this, &Screen::onNordaManualTextBtnClicked);
    connect(manualIcon, &QButtonGroup::idClicked, this, &Screen::onNordaManualIconBtnClicked);
    connect(autoDualText, &QButtonGroup::idClicked, this, &Screen::OonNordaAutoDualTextBtnClicked);
    connect(autoDualIcon, &QButtonGroup::idClicked, this, &Screen::OnNordaDualButtonClicked);

    connect(ui.key_rear, &QPushButton::pressed, this, &Screen::onNordadRearPressed);
    connect(ui.key_rear, &QPushButton::clicked, this, &Screen::onNordaRearClicked);
    connect(ui.key_settings, &QPushButton::clicked, this, &Screen::onSettingsClicked);

    const QWidgetList overlays = {ui.Txt_rear,
                                  ui.icon_left_seat_heat,
                                  ui.icon_left_seat_AC,
                                  ui.icon_right_seat_heat,
                                  ui.icon_right_seat_AC,
                                  ui.icon_left_seat_heat_2,
                                  ui.icon_left_seat_AC_2,
                                  ui.icon_right_seat_heat_2,
                                  ui.icon_right_seat_AC_2,
                                  ui.Txt_P1,
                                  ui.Txt_P2,
                                  ui.Txt_P1_2,
                                  ui.Txt_P2_2};
    for (QWidget *overlay : overlays)
        overlay->setAttribute(Qt::WA_TransparentForMouseEvents);
    ui.bkg_air_gear_position->installEventFilter(this);
    ui.bkg_air_gear_position_2->installEventFilter(this);

    auto *scrolling = new SLabelManager(this);
    scrolling->addLabel(ui.Txt_fork);
    scrolling->setAutoRepeat(true);
    ui.Txt_rear->setText(Translator::instance()->text(Translator::ZoneRear));
}

void Vantiq_Climate_Widget::InitNordaUi()
{
    createNavigationBar();
    m_form->button_widget->hide();
    m_form->key_settings->hide();
    m_form->button_widget_2->hide();
}

void Vantiq_Climate_Widget::showEvent(QShowEvent *event)
{
    DataScreen::showEvent(event);
    connect(adaptor(), &VtqAdaptor::NordaClimateCtrlStatusNotify, this,
            &Screen::onNordaNotifyClimateCtrlStatus, Qt::UniqueConnection);
}

void Vantiq_Climate_Widget::hideEvent(QHideEvent *event)
{
    DataScreen::hideEvent(event);
    disconnect(adaptor(), &VtqAdaptor::NordaClimateCtrlStatusNotify, this,
               &Screen::onNordaNotifyClimateCtrlStatus);
}

void Vantiq_Climate_Widget::onEnter()
{
    send(frontCommands.requestInfo);
    send(secondCommands.requestInfo);
}

void Vantiq_Climate_Widget::resume()
{
    onEnter();
}

void Vantiq_Climate_Widget::onSettingsClicked()
{
    soundClickedBeep();
    sendToZone(frontCommands.settings, secondCommands.settings);
}

void Vantiq_Climate_Widget::connectVtqAdaptor()
{
    NORDA_TRACE;
}

void Vantiq_Climate_Widget::disconnectVtqAdaptor()
{
    NORDA_TRACE;
}

void Vantiq_Climate_Widget::secondconnectVtqAdaptor()
{
    NORDA_TRACE;
}

void Vantiq_Climate_Widget::seconddisconnectVtqAdaptor()
{
    NORDA_TRACE;
}

void Vantiq_Climate_Widget::onClimateType() {}

void Vantiq_Climate_Widget::onSecondClimateType() {}

// ---- Zones
// ---------------------------------------------------------------------------------------

void Vantiq_Climate_Widget::onNordadRearPressed()
{
    soundClickedBeep();
    InitByte();
    m_rear = !m_rear;
    Translator *texts = Translator::instance();
    m_form->Txt_rear->setText(texts->text(m_rear ? Translator::ZoneFront : Translator::ZoneRear));
    m_form->stackedWidget->setCurrentIndex(m_rear ? ManualLayout : AutoDualLayout);
    m_bytes.set(zoneCommandBit(m_rear));
    if (m_rear) {
        m_form->key_Steering_wheel_heat_2->hide();
        m_form->key_circulation_2->hide();
        m_form->key_demisting_2->hide();
        m_form->key_wind_direction_2->hide();
    }
    m_form->Txt_rear->setText(m_rear ? frontCaption : rearCaption);
    sendBytes();
}

void Vantiq_Climate_Widget::onNordaRearClicked(bool checked)
{
    const int type = checked ? ManualLayout : AutoDualLayout;
    m_zone = checked ? FrontZone : SecondZone;
    m_mainUiType = m_secondUiType = m_shownUiType = type;
    m_form->stackedWidget->setCurrentIndex(type);
    if (checked)
        m_form->tempbar_W->installEventFilter(this);
    else
        m_form->tempbar_W->removeEventFilter(this);
}

void Vantiq_Climate_Widget::updateCurrMainUIType()
{
    m_form->stackedWidget->setCurrentIndex(m_mainUiType);
    if (m_zone != SecondZone)
        return;
    m_zone = FrontZone;
    VtqService::instance()->setClimateRearZone(false);
    updateFrontZoneUi();
    m_form->Txt_rear->setText(rearCaption);
}

void Vantiq_Climate_Widget::updateCurrSecondUIType()
{
    m_form->stackedWidget->setCurrentIndex(m_secondUiType);
    if (m_zone != FrontZone)
        return;
    m_zone = SecondZone;
    VtqService::instance()->setClimateRearZone(true);
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
    for (QWidget *widget : activeUiType() == ManualLayout ? manual : autoDual)
        updateBtnVisible(features, feature, widget);
}

void Vantiq_Climate_Widget::applyFeatures0(const Features &features)
{
    const Ui_norda_vantiq_climate &ui = *m_form;
    updateBtnVisible(features, 2, {ui.tempbar_W, ui.key_temp_next, ui.key_temp_prev}, {});
    updateBtnVisible(features, 0, {},
                     {ui.key_left_temp_next, ui.key_left_temp_prev, ui.Txt_left_temp});
    updateBtnVisible(features, 1, {}, {ui.key_right_temp_next, ui.key_right_temp_prev});
    if (activeUiType() == AutoDualLayout) {
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

// ---- Module-defined keys, display types, lists, popups
// --------------------------------------------

void Vantiq_Climate_Widget::showCustomControls(const QStringList &captions,
                                               const QByteArray &states)
{
    const Ui_norda_vantiq_climate &ui = *m_form;
    applyCustomControlLabels({{ui.key_P1, ui.key_P2}, {ui.Txt_P1, ui.Txt_P2}}, captions, states);
    applyCustomControlLabels({{ui.key_P1_2, ui.key_P2_2}, {ui.Txt_P1_2, ui.Txt_P2_2}}, captions,
                             states);
}

void Vantiq_Climate_Widget::onCustomControlLabels(const QStringList &captions,
                                                  const QByteArray &states)
{
    updateCurrMainUIType();
    showCustomControls(captions, states);
}

void Vantiq_Climate_Widget::onSecondCustomControlLabels(const QStringList &captions,
                                                        const QByteArray &states)
{
    updateCurrSecondUIType();
    showCustomControls(captions, states);
}

void Vantiq_Climate_Widget::onGuiDisplayTypeChanged(unsigned char type)
{
    if (type == 0)
        m_form->stackedWidget->setCurrentIndex(m_mainUiType);
    followDisplayType(type);
}

void Vantiq_Climate_Widget::onSecondGuiDisplayTypeChanged(unsigned char type)
{
    if (type == 0)
        m_form->stackedWidget->setCurrentIndex(m_secondUiType);
    const DisplayWish wish = displayWish(type);
    createSecondPopup(wish.popup);
    createSecondListview(wish.list);
}

void Vantiq_Climate_Widget::onListInfo(const QString &, const QByteArray &, const QStringList &,
                                       const QList<QVariant> &, const QByteArray &)
{
    createListview(false);
}

void Vantiq_Climate_Widget::onSecondPopup(const QString &, const QStringList &, const QStringList &,
                                          const QByteArray &)
{
    createSecondPopup(false);
}

void Vantiq_Climate_Widget::onSecondListInfo(const QString &, const QByteArray &,
                                             const QStringList &, const QList<QVariant> &,
                                             const QByteArray &)
{
    createSecondListview(false);
}

void Vantiq_Climate_Widget::onSecondPopupKeyClicked(int)
{
    soundClickedBeep();
}

void Vantiq_Climate_Widget::onSecondListBackClicked()
{
    soundClickedBeep();
    send(secondCommands.listBack);
}

void Vantiq_Climate_Widget::onSecondListUpClicked()
{
    soundClickedBeep();
    send(secondCommands.listPrevious);
}

void Vantiq_Climate_Widget::onSecondListDnClicked()
{
    soundClickedBeep();
    send(secondCommands.listNext);
}

void Vantiq_Climate_Widget::onSecondListItemClicked(int)
{
    soundClickedBeep();
}

void Vantiq_Climate_Widget::onSecondListCustomItemPressed(int) {}

void Vantiq_Climate_Widget::onSecondListCustomItemClicked(int)
{
    soundClickedBeep();
}

void Vantiq_Climate_Widget::onSecondListCustomItemReleased(int) {}

void Vantiq_Climate_Widget::onShowSecendListview()
{
    NORDA_TRACE;
}

void Vantiq_Climate_Widget::createSecondPopup(bool show)
{
    NORDA_TRACE << show;
}

void Vantiq_Climate_Widget::createSecondListview(bool show)
{
    NORDA_TRACE << show;
}

} // namespace norda
