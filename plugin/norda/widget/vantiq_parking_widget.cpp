#include "vantiq_parking_widget.h"

#include "customcontrols.h"
#include "debug.h"
#include "mem/settingsexe.h"
#include "norda/vtqservice.h"
#include "ui_norda_parking.h"

#include <QButtonGroup>

namespace norda {

using Screen = Vantiq_Parking_Widget;

static constexpr ScreenCommands commands = {
    &VtqAdaptor::parkingListBack,    &VtqAdaptor::parkingListPrevious,
    &VtqAdaptor::parkingListNext,    &VtqAdaptor::parkingSettings,
    &VtqAdaptor::requestParkingInfo, &VtqAdaptor::parkingCustomControls,
};
static constexpr AdaptorBinding steps[] = {
    binding<&VtqAdaptor::parkPopUpNotify, &Screen::onPopup>,
    binding<&VtqAdaptor::parkingTopBarText, &Screen::onParkingTopBarText>,
    binding<&VtqAdaptor::parkingDistanceFront, &Screen::onParkingDistanceFront>,
    binding<&VtqAdaptor::parkingDistanceLeft, &Screen::onParkingDistanceLeft>,
    binding<&VtqAdaptor::parkingDistanceRight, &Screen::onParkingDistanceRight>,
    binding<&VtqAdaptor::parkCustomControlLabels, &Screen::onCustomControlLabels>,
    binding<&VtqAdaptor::parkListInfo, &Screen::onListInfo>,
    binding<&VtqAdaptor::parkGuiDisplayType, &Screen::onGuiDisplayTypeChanged>,
};

static constexpr int topBarLength = 50;

Vantiq_Parking_Widget::Vantiq_Parking_Widget(QWidget *parent)
    : DataScreen(BarPage::Parking, commands, steps, parent)
    , m_form(std::make_unique<Ui_norda_parking>())
{
    m_form->setupUi(this);
    m_settingsExe = new mem::SettingsExe(this);
    init();
    m_form->key_split->setCheckable(true);
    m_form->key_camera->setCheckable(true);
    send(commands.requestInfo);

    m_form->button_widget->hide();
    m_form->top_title_widget->show();
    m_form->key_settings->hide();
    m_form->key_settings->raise();
    m_form->key_split->hide();
    createNavigationBar();

    connect(m_form->key_settings, &QPushButton::clicked, this, &Screen::onNodraSettingsClicked);
    receive(&VtqAdaptor::parkingDistanceRear, &Screen::onNordaParkingData);
}

Vantiq_Parking_Widget::~Vantiq_Parking_Widget() = default;

void Vantiq_Parking_Widget::init()
{
    init_UI();
    init_Zone();
}

void Vantiq_Parking_Widget::init_UI()
{
    m_form->car_radar_widget->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_blindStopLabel = new QLabel(m_form->function_widget);
    m_blindStopLabel->setObjectName(QStringLiteral("blindStopLabel"));
    m_blindStopLabel->setGeometry(487, 24, 301, 49);
    m_blindStopLabel->setAlignment(Qt::AlignCenter);
    m_blindStopLabel->setFont(m_form->Txt_fork->font());
    QPalette caution = m_blindStopLabel->palette();
    caution.setColor(QPalette::WindowText, QColor(0xFF, 0xB2, 0x24));
    m_blindStopLabel->setPalette(caution);
    setUpLabels();

    m_customLabels = {m_form->Txt_P1, m_form->Txt_P2};
    scrollLongTexts({m_form->Txt_fork});
    m_form->key_P1->setCaption(m_form->Txt_P1);
    m_form->key_P2->setCaption(m_form->Txt_P2);
    m_customKeys = groupCustomKeys(m_form->key_P1, m_form->key_P2);
    connect(m_form->key_split, &QPushButton::clicked, this, &Screen::onSplitClicked);
    connect(m_form->key_camera, &QPushButton::clicked, this, &Screen::onCameraClicked);

    m_zoneLabels = {m_form->icon_front_left_radar,      m_form->icon_front_left_mid_radar,
                    m_form->icon_front_right_mid_radar, m_form->icon_front_right_radar,
                    m_form->icon_rear_left_radar,       m_form->icon_rear_left_mid_radar,
                    m_form->icon_rear_right_mid_radar,  m_form->icon_rear_right_radar};
}

void Vantiq_Parking_Widget::init_Zone()
{
    VtqService::instance()->getParkingAssistZones();
    for (int zone = 0; zone < ParkingZoneCount; ++zone) {
        QLabel *label = m_zoneLabels[size_t(zone)];
        label->show();
        m_images.show(label, zoneStartImage(ParkingZone(zone)));
    }
}

void Vantiq_Parking_Widget::disconnectVtqAdaptor()
{
    DataScreen::disconnectVtqAdaptor();
    if (adaptor())
        disconnect(adaptor(), &VtqAdaptor::parkingDistanceRear, this, &Screen::onNordaParkingData);
}

void Vantiq_Parking_Widget::showEvent(QShowEvent *event)
{
    DataScreen::showEvent(event);
    m_blindStopLabel->clear();
}

void Vantiq_Parking_Widget::onPButtonPressed(int id)
{
    onButtonPressed(id);
}

void Vantiq_Parking_Widget::onPButtonClicked(int id)
{
    onButtonClicked(id);
}

void Vantiq_Parking_Widget::onPButtonReleased(int id)
{
    onButtonReleased(id);
}

void Vantiq_Parking_Widget::onCustomControlLabels(const QStringList &captions,
                                                  const QByteArray &states)
{
    NORDA_TRACE << captions << states;
}

void Vantiq_Parking_Widget::updateCustomControlLabels(const QStringList &captions,
                                                      const QByteArray &states)
{
    const CustomControls controls = {{m_customKeys->button(0), m_customKeys->button(1)},
                                     {m_customLabels[0], m_customLabels[1]}};
    applyCustomControlLabels(controls, captions, states);
}

void Vantiq_Parking_Widget::onListInfo(const QString &, const QByteArray &, const QStringList &,
                                       const QList<QVariant> &, const QByteArray &)
{
    createListview(false);
}

void Vantiq_Parking_Widget::onGuiDisplayTypeChanged(unsigned char type)
{
    followDisplayType(type);
}

void Vantiq_Parking_Widget::onParkingTopBarText(const QString &text)
{
    m_form->Txt_fork->setText(text.left(topBarLength));
}

void Vantiq_Parking_Widget::showDistances(ParkingZone firstZone, const QByteArray &distances)
{
    const auto levels = parseDistances(distances);
    if (!levels) {
        NORDA_WARNING << "parking distances: expected" << zonesPerEnd << "bytes, got"
                      << distances.size();
        return;
    }
    for (int i = 0; i < zonesPerEnd; ++i) {
        const int zone = firstZone + i;
        m_images.show(m_zoneLabels[size_t(zone)],
                      zoneImage(ParkingZone(zone), (*levels)[size_t(i)]));
    }
}

void Vantiq_Parking_Widget::onParkingDistanceFront(const QByteArray &distances)
{
    showDistances(FrontLeft, distances);
}

void Vantiq_Parking_Widget::onParkingDistanceRear(const QByteArray &distances)
{
    showDistances(RearLeft, distances);
}

void Vantiq_Parking_Widget::onParkingDistanceLeft(const QByteArray &distances)
{
    NORDA_TRACE << distances.toHex();
    VtqService::instance()->getParkingAssistZones();
}

void Vantiq_Parking_Widget::onParkingDistanceRight(const QByteArray &distances)
{
    NORDA_TRACE << distances.toHex();
    VtqService::instance()->getParkingAssistZones();
}

void Vantiq_Parking_Widget::onNordaParkingData(const QByteArray &message)
{
    if (message.size() < parkingMessageSize) {
        NORDA_WARNING << "parking message: expected" << parkingMessageSize << "bytes, got"
                      << message.size();
        return;
    }
    const auto parsed = parseParkingMessage(message);
    if (!parsed)
        return;
    QString blindSpot;
    if (parsed->kind == ParkingMessage::LeftBlindSpot)
        blindSpot = QStringLiteral("Left Blind stop:%1").arg(parsed->level);
    else if (parsed->kind == ParkingMessage::RightBlindSpot)
        blindSpot = QStringLiteral("Right Blind stop:%1").arg(parsed->level);
    m_blindStopLabel->setText(blindSpot);
    if (parsed->kind == ParkingMessage::Zone)
        showZone(parsed->zone, parsed->level);
}

/** A zone message speaks of one zone, and thereby says that the seven others are clear. */
void Vantiq_Parking_Widget::showZone(ParkingZone nearest, int level)
{
    for (int zone = 0; zone < ParkingZoneCount; ++zone)
        m_images.show(m_zoneLabels[size_t(zone)],
                      zoneImage(ParkingZone(zone), zone == nearest ? level : 0));
}

} // namespace norda
