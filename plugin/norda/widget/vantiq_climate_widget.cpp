#include "vantiq_climate_widget.h"

#include "customcontrols.h"
#include "debug.h"
#include "translator.h"
#include "ui_norda_vantiq_climate.h"

#include <QButtonGroup>

namespace norda {

using Screen = Vantiq_Climate_Widget;

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

Vantiq_Climate_Widget::Vantiq_Climate_Widget(QWidget *parent)
    : DataScreen(BarPage::Climate, frontCommands, {}, parent)
    , m_form(std::make_unique<Ui_norda_vantiq_climate>())
{
    m_form->setupUi(this);
    setUpLabels();
    init_UI();

    receive(&VtqAdaptor::secondclimateType, &Screen::onSecondClimateType);
    receive(&VtqAdaptor::climateType, &Screen::onClimateType);
    onSecondClimateType();
    onClimateType();

    m_form->stackedWidget->setCurrentWidget(m_form->climate_AutoDual);
    m_form->climate_AutoDual->show();
    m_form->key_auto->show();
    m_form->key_dual->show();
    receive(&VtqAdaptor::NordaClimateCtrlStatusNotify, &Screen::onNordaNotifyClimateCtrlStatus);
    updateCooledButtonState(false, 0);
    updateCooledButtonState(true, 0);
    InitNordaUi();
}

Vantiq_Climate_Widget::~Vantiq_Climate_Widget()
{
    Vantiq_Climate_Widget::disconnectVtqAdaptor();
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
    connectKeyGroups();
    connect(ui.key_rear, &QPushButton::pressed, this, &Screen::onNordadRearPressed);
    connect(ui.key_rear, &QPushButton::clicked, this, &Screen::onNordaRearClicked);
    connect(ui.key_settings, &QPushButton::clicked, this, &Screen::onSettingsClicked);
    letTouchesThrough();
    ui.bkg_air_gear_position->installEventFilter(this);
    ui.bkg_air_gear_position_2->installEventFilter(this);
    scrollLongTexts({ui.Txt_fork});
    ui.Txt_rear->setText(Translator::instance()->text(Translator::ZoneRear));
}

void Vantiq_Climate_Widget::connectKeyGroups()
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
}

/** What lies over the keys: the seats' images and the captions. */
void Vantiq_Climate_Widget::letTouchesThrough()
{
    const Ui_norda_vantiq_climate &ui = *m_form;
    const QWidgetList overlays = {ui.icon_left_seat_heat,    ui.icon_left_seat_AC,
                                  ui.icon_right_seat_heat,   ui.icon_right_seat_AC,
                                  ui.icon_left_seat_heat_2,  ui.icon_left_seat_AC_2,
                                  ui.icon_right_seat_heat_2, ui.icon_right_seat_AC_2};
    for (QWidget *overlay : overlays)
        overlay->setAttribute(Qt::WA_TransparentForMouseEvents);
    ui.key_rear->setCaption(ui.Txt_rear);
    ui.key_P1->setCaption(ui.Txt_P1);
    ui.key_P2->setCaption(ui.Txt_P2);
    ui.key_P1_2->setCaption(ui.Txt_P1_2);
    ui.key_P2_2->setCaption(ui.Txt_P2_2);
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
    receive(&VtqAdaptor::NordaClimateCtrlStatusNotify, &Screen::onNordaNotifyClimateCtrlStatus);
}

void Vantiq_Climate_Widget::hideEvent(QHideEvent *event)
{
    DataScreen::hideEvent(event);
    if (adaptor())
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

ScreenCommands::ControlCommand Vantiq_Climate_Widget::customControl() const
{
    return isSecondZone() ? secondCommands.customControl : frontCommands.customControl;
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

void Vantiq_Climate_Widget::returnToLayout()
{
    m_model.zones().returnToLayout();
    showPage();
}

void Vantiq_Climate_Widget::onGuiDisplayTypeChanged(unsigned char type)
{
    if (DisplayType(type) == DisplayType::OwnPage)
        returnToLayout();
    followDisplayType(type);
}

void Vantiq_Climate_Widget::onSecondGuiDisplayTypeChanged(unsigned char type)
{
    if (DisplayType(type) == DisplayType::OwnPage)
        returnToLayout();
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
