#include "vantiq_vehicle_widget.h"

#include "debug.h"
#include "mem/settingsexe.h"
#include "ui_norda_vehicles.h"

namespace norda {

using Screen = Vantiq_Vehicle_Widget;

static constexpr ScreenCommands commands = {
    &VtqAdaptor::vehicleListBack,    &VtqAdaptor::vehicleListPrevious,
    &VtqAdaptor::vehicleListNext,    &VtqAdaptor::vehicleSettings,
    &VtqAdaptor::requestVehicleInfo, &VtqAdaptor::vehicleCustomControls,
};
static constexpr AdaptorBinding steps[] = {
    binding<&VtqAdaptor::vehPopUpNotify, &Screen::onPopup>,
    binding<&VtqAdaptor::doorStatus, &Screen::onDoorStatus>,
    binding<&VtqAdaptor::batteryVoltage, &Screen::onBatteryVoltage>,
    binding<&VtqAdaptor::compassHeading, &Screen::onCompassHeading>,
    binding<&VtqAdaptor::tirePressureStatus, &Screen::onTirePressureStatus>,
    binding<&VtqAdaptor::tireTemperatureStatus, &Screen::onTireTemperatureStatus>,
    binding<&VtqAdaptor::seatbeltStatus, &Screen::onSeatbeltStatus>,
    binding<&VtqAdaptor::checkEngineStatus, &Screen::onCheckEngineStatus>,
    binding<&VtqAdaptor::checkGearPositionStatus, &Screen::onCheckGearPositionStatus>,
    binding<&VtqAdaptor::vehicleInfoText, &Screen::onVehicleInfoText>,
    binding<&VtqAdaptor::vehTopBarText, &Screen::onVehTopBarText>,
    binding<&VtqAdaptor::vehCustomeCtrlLabels, &Screen::onVehCustomeCtrlLabels>,
    binding<&VtqAdaptor::vehListInfo, &Screen::onVehListInfo>,
    binding<&VtqAdaptor::vehGuiDisplayType, &Screen::onVehGuiDisplayType>,
};
static constexpr AdaptorBinding lastReceiver =
    binding<&VtqAdaptor::tirePressureStatus, &Screen::updateNordaTirePressureStatus>;

static constexpr int batteryLength = 5;
static constexpr int infoTextLength = 20;
static constexpr int topBarLength = 50;

Vantiq_Vehicle_Widget::Vantiq_Vehicle_Widget(QWidget *parent)
    : DataScreen(BarPage::Vehicle, commands, {steps, &lastReceiver}, parent)
    , m_form(std::make_unique<Ui_norda_vehicles>())
{
    m_form->setupUi(this);
    m_settingsExe = new mem::SettingsExe(this);
    init();
    receive(&VtqAdaptor::Properties2TextInfo, &Screen::onProperties2TextInfo);
    connectLastReceiver();
    InitNordaUI();
}

Vantiq_Vehicle_Widget::~Vantiq_Vehicle_Widget() = default;

void Vantiq_Vehicle_Widget::init()
{
    initUI();
    connectVtqAdaptor();
    send(commands.requestInfo);
}

void Vantiq_Vehicle_Widget::initUI()
{
    setUpLabels();
    m_doorLabels = {
        {0, m_form->icon_hood},
        {1, m_form->icon_trunk},
        {2, m_form->icon_door_rear_left},
        {3, m_form->icon_door_rear_right},
        {4, m_form->icon_door_front_left},
        {5, m_form->icon_door_front_right},
    };
    m_doorBits = {m_form->icon_hood,
                  m_form->icon_trunk,
                  m_form->icon_door_front_left,
                  m_form->icon_door_front_right,
                  m_form->icon_door_rear_left,
                  m_form->icon_door_rear_right};
    onDoorStatus(0);

    scrollLongTexts({m_form->Txt_fork, m_form->Txt_carInfo, m_form->Txt_carInfo_2});
    m_form->key_P1->setCaption(m_form->Txt_P1);
    m_form->key_P2->setCaption(m_form->Txt_P2);
    groupCustomKeys(m_form->key_P1, m_form->key_P2);
    m_form->key_engine->setCheckable(true);
    connect(m_form->key_engine, &QPushButton::clicked, this, &Screen::onCheckEngineClicked);
    connect(m_form->key_settings, &QPushButton::clicked, this, &Screen::onSettingsClicked);

    m_tires = {{
        {m_form->icon_typer_front_left, m_form->Txt_psi_front_left, m_form->Txt_temp_front_left},
        {m_form->icon_typer_front_right, m_form->Txt_psi_front_right, m_form->Txt_temp_front_right},
        {m_form->icon_typer_rear_left, m_form->Txt_psi_rear_left, m_form->Txt_temp_rear_left},
        {m_form->icon_typer_rear_right, m_form->Txt_psi_rear_right, m_form->Txt_temp_rear_right},
    }};
}

void Vantiq_Vehicle_Widget::InitNordaUI()
{
    createNavigationBar();
    m_form->button_widget->hide();
    m_form->key_settings->hide();
    for (const TireBox &tire : m_tires)
        tire.icon->hide();
    // An indicator: a touch shows its other look, but sends nothing.
    disconnect(m_form->key_engine, &QPushButton::clicked, this, &Screen::onCheckEngineClicked);
}

void Vantiq_Vehicle_Widget::onPopup(const QString &title, const QStringList &texts,
                                    const QStringList &values, const QByteArray &bytes)
{
    NORDA_TRACE << title << texts << values << bytes;
    createPopup(false);
}

void Vantiq_Vehicle_Widget::onPopupKeyClicked(int key)
{
    DataScreen::onPopupKeyClicked(key);
    createPopup(false);
}

void Vantiq_Vehicle_Widget::onListCustomItemClicked(int) {}

void Vantiq_Vehicle_Widget::onShowListview() {}

void Vantiq_Vehicle_Widget::onVehCustomeCtrlLabels(const QStringList &captions,
                                                   const QByteArray &states)
{
    NORDA_TRACE << captions << states;
}

void Vantiq_Vehicle_Widget::onVehListInfo(const QString &title, const QByteArray &types,
                                          const QStringList &rows, const QList<QVariant> &values,
                                          const QByteArray &states)
{
    NORDA_TRACE << title << types << rows << values << states;
    createListview(false);
}

void Vantiq_Vehicle_Widget::onVehGuiDisplayType(unsigned char type)
{
    followDisplayType(type);
}

void Vantiq_Vehicle_Widget::onDoorStatus(unsigned char status)
{
    for (int bit = 0; bit < m_doorBits.size(); ++bit)
        m_doorBits[bit]->setVisible(status & (1 << bit));
}

void Vantiq_Vehicle_Widget::onNordaDoorStatus(unsigned char code)
{
    for (auto door = m_doorLabels.cbegin(); door != m_doorLabels.cend(); ++door)
        door.value()->setVisible(door.key() == code);
}

void Vantiq_Vehicle_Widget::onBatteryVoltage(const QString &text)
{
    m_form->Txt_battery->setText(text.left(batteryLength));
    m_form->Txt_battery->raise();
}

void Vantiq_Vehicle_Widget::onCheckEngineStatus(unsigned char status)
{
    const auto lamp = EngineLamp(status);
    m_form->key_engine->setEnabled(lamp != EngineLamp::Unknown);
    if (lamp == EngineLamp::Off || lamp == EngineLamp::On)
        m_form->key_engine->setChecked(lamp == EngineLamp::On);
}

void Vantiq_Vehicle_Widget::onCheckEngineClicked()
{
    soundClickedBeep();
    send(&VtqAdaptor::onClickCheckEngineBtn);
}

void Vantiq_Vehicle_Widget::onCompassHeading(const QString &text)
{
    NORDA_TRACE << text;
}

void Vantiq_Vehicle_Widget::onSeatbeltStatus(unsigned char status)
{
    NORDA_TRACE << status;
}

void Vantiq_Vehicle_Widget::onCheckGearPositionStatus(unsigned char position)
{
    NORDA_TRACE << position;
}

void Vantiq_Vehicle_Widget::onProperties2TextInfo(QList<int> properties)
{
    static constexpr int needed = 10;
    static constexpr int gaugesNeed = 6; // a list that is long enough for them is no fault
    if (properties.size() < needed) {
        if (properties.size() < gaugesNeed)
            NORDA_WARNING << "vehicle properties: expected" << needed << "numbers, got"
                          << properties.size();
        return;
    }
    onDoorStatus(static_cast<unsigned char>(properties[0]));
    onBatteryVoltage(QString::number(properties[1]) + QLatin1Char('V'));

    static constexpr Tire order[] = {FrontLeft, FrontRight, RearRight, RearLeft};
    static constexpr int firstTire = 6;
    for (int i = 0; i < TireCount; ++i) {
        const TireBox &tire = m_tires[order[i]];
        updateNordaTireTemperatureStatus(tire.icon, tire.temperature, properties[firstTire + i]);
    }
}

/** The info text and the top-bar text have one place, so one of them shows. */
void Vantiq_Vehicle_Widget::setInfoTextShown(bool shown)
{
    m_infoTextShown = shown;
    m_form->Txt_fork->setHidden(shown);
    m_form->Txt_carInfo->setVisible(shown);
    m_form->Txt_carInfo_2->setVisible(shown);
}

void Vantiq_Vehicle_Widget::onVehicleInfoText(const QString &line1, const QString &line2)
{
    setInfoTextShown(!line1.isEmpty() || !line2.isEmpty());
    if (!m_infoTextShown) {
        m_form->Txt_fork->setText(m_topBarText.left(topBarLength));
        return;
    }
    m_form->Txt_carInfo->setText(line1.left(infoTextLength));
    m_form->Txt_carInfo_2->setText(line2.left(infoTextLength));
}

void Vantiq_Vehicle_Widget::onVehTopBarText(const QString &text)
{
    if (m_infoTextShown)
        return; // lost: it does not come back after the info text
    m_topBarText = text;
    setInfoTextShown(false);
    m_form->Txt_fork->setText(m_topBarText.left(topBarLength));
}

} // namespace norda
