// What the climate screen sends: the byte map of a touch, the direct values of a drag, and the
// single commands that hosts may connect.

#include "customcontrols.h"
#include "mcumanager.h"
#include "ui_norda_vantiq_climate.h"
#include "vantiq_climate_widget.h"

#include <QMouseEvent>

namespace norda {

// ---- The byte map -------------------------------------------------------------------------------

void Vantiq_Climate_Widget::InitByte()
{
    m_bytes.clear();
}

void Vantiq_Climate_Widget::sendBytes()
{
    if (adaptor())
        adaptor()->NordatriggerRearDefrostButton(m_bytes.map());
}

std::optional<CommandBit> Vantiq_Climate_Widget::bitOfTouch(ClimateGroup group, int id)
{
    if (const auto key = seatKey(group, id)) {
        const auto &seats = group == ClimateGroup::ManualIcon ? m_manualSeats : m_seats;
        const bool isRight = *key == SeatKey::RightHeat || *key == SeatKey::RightCool;
        bool &up = m_seatStepsUp[size_t(*key)];
        up = seatStepsUp(group, *key, up, seats[isRight]);
        return seatCommandBit(group, *key, up);
    }
    if (group == ClimateGroup::AutoDualIcon && id == ventKeyId) {
        m_ventIndex = (m_ventIndex + 1) % ventModeCount;
        return ventCommandBit(m_ventIndex);
    }
    return commandBit(group, id);
}

void Vantiq_Climate_Widget::touch(ClimateGroup group, int id)
{
    soundClickedBeep();
    InitByte();
    if (const auto bit = bitOfTouch(group, id))
        m_bytes.set(*bit);
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

// ---- Drags --------------------------------------------------------------------------------------

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

    const QEvent::Type type = event->type();
    const int x = static_cast<QMouseEvent *>(event)->x();
    const bool released = type == QEvent::MouseButtonRelease;
    if (watched == m_form->tempbar_W) {
        setTemperaturePosition(type, x, released);
        if (released)
            onTemperature();
        return false;
    }
    if (type == QEvent::MouseButtonPress)
        McuManager::instance()->triggerBeep(0);
    if (watched == m_form->bkg_air_gear_position_2) {
        setManualFanmeterPixmap(x, !released);
        if (released)
            onManualFan();
    } else {
        setAutoDualFanmeterPixmap(x, !released);
        if (released)
            onAutoFan();
    }
    return false;
}

void Vantiq_Climate_Widget::setTemperaturePosition(int eventType, int x, bool released)
{
    static constexpr int travel = 414;
    static constexpr double fullScale = 255.0;
    Q_UNUSED(released)

    QLabel *marker = m_form->bkg_temp_cusl;
    if (eventType == QEvent::MouseButtonPress) {
        if (x >= marker->x() && x <= marker->x() + marker->width())
            m_draggingTemperature = true;
    } else if (eventType == QEvent::MouseMove) {
        if (!m_draggingTemperature || x < 0 || x > travel)
            return;
        marker->move(x, marker->y());
        m_rawTemperature = int(x * fullScale / travel);
    } else if (eventType == QEvent::MouseButtonRelease) {
        m_draggingTemperature = false;
    }
}

void Vantiq_Climate_Widget::onTemperature()
{
    sendToZone(&VtqAdaptor::manTempValue, &VtqAdaptor::secoundmanTempValue, m_rawTemperature, true);
}

struct FanSegment
{
    int lastX;
    int raw;
};

// By level. The raw values are not those that a reported speed is drawn from.
static constexpr FanSegment fanSegments[] = {
    {0, 0}, {46, 18}, {105, 36}, {164, 72}, {223, 144}, {282, 180}, {341, 216}, {400, 255},
};

void Vantiq_Climate_Widget::setManualFanmeterPixmap(int x, bool pressed)
{
    Q_UNUSED(pressed)
    int level = 0; // beyond the last segment only the image goes back
    for (int i = 0; i < int(std::size(fanSegments)); ++i) {
        if (x > fanSegments[i].lastX)
            continue;
        level = i;
        m_rawManualFan = fanSegments[i].raw;
        break;
    }
    showFanLevel(m_form->bkg_air_gear_position_2, level);
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
    sendToZone(&VtqAdaptor::fanDirectValue, &VtqAdaptor::secoundfanDirectValue, m_rawAutoFan, true);
}

// ---- Single commands ----------------------------------------------------------------------------

using ClickCommand = void (VtqAdaptor::*)(bool on);
using PressCommand = void (VtqAdaptor::*)(bool pressed, bool released);
using A = VtqAdaptor;

/** The command of one key, front zone and second; a key is either held or clicked. */
struct SingleCommand
{
    ClimateGroup group;
    int id;
    PressCommand frontPress, secondPress;
    ClickCommand frontClick, secondClick;
};

// clang-format off
#define NORDA_HELD(group, id, name)    {ClimateGroup::group, id, &A::name, &A::secound##name, nullptr, nullptr}
#define NORDA_CLICKED(group, id, name) {ClimateGroup::group, id, nullptr, nullptr, &A::name, &A::secound##name}
static constexpr SingleCommand singleCommands[] = {
    NORDA_HELD(ManualIcon,  0, manTempDecButton),
    NORDA_HELD(ManualIcon,  1, fanSpeedDownButton),
    NORDA_HELD(ManualIcon,  2, manTempIncButton),
    NORDA_HELD(ManualIcon,  3, fanSpeedUpButton),
    NORDA_CLICKED(ManualIcon,  4, triggerLHeatedSeatButton),
    NORDA_CLICKED(ManualIcon,  5, triggerRHeatedSeatButton),
    NORDA_CLICKED(ManualIcon,  6, triggerLCooledSeatButton),
    NORDA_CLICKED(ManualIcon,  7, triggerRCooledSeatButton),
    NORDA_CLICKED(ManualIcon,  8, triggerVentPositionButton),
    NORDA_CLICKED(ManualIcon,  9, triggerRecircFreshButton),
    NORDA_CLICKED(ManualIcon, 10, triggerHeatedSteeringWheelButton),
    NORDA_CLICKED(ManualIcon, 11, triggerClimateOnOffButton),
    NORDA_CLICKED(ManualIcon, 12, triggerFrontDefrostButton),
    NORDA_CLICKED(ManualIcon, 13, triggerRearDefrostButton),
    NORDA_CLICKED(ManualText,  0, triggerACButton),
    NORDA_CLICKED(ManualText,  1, triggerMaxACButton),
    NORDA_HELD(AutoDualIcon,  0, autoMainZoneTempIncButton),
    NORDA_HELD(AutoDualIcon,  1, autoSecZoneTempIncButton),
    NORDA_HELD(AutoDualIcon,  2, autoMainZoneTempDecButton),
    NORDA_HELD(AutoDualIcon,  3, autoSecZoneTempDecButton),
    NORDA_HELD(AutoDualIcon,  4, fanSpeedDownButton),
    NORDA_HELD(AutoDualIcon,  5, fanSpeedUpButton),
    NORDA_CLICKED(AutoDualIcon,  6, triggerVentPositionButton),
    NORDA_CLICKED(AutoDualIcon,  7, triggerRecircFreshButton),
    NORDA_CLICKED(AutoDualIcon,  8, triggerHeatedSteeringWheelButton),
    NORDA_CLICKED(AutoDualIcon,  9, triggerClimateOnOffButton),
    NORDA_CLICKED(AutoDualIcon, 10, triggerLHeatedSeatButton),
    NORDA_CLICKED(AutoDualIcon, 11, triggerRHeatedSeatButton),
    NORDA_CLICKED(AutoDualIcon, 12, triggerLCooledSeatButton),
    NORDA_CLICKED(AutoDualIcon, 13, triggerRCooledSeatButton),
    NORDA_CLICKED(AutoDualIcon, 14, triggerFrontDefrostButton),
    NORDA_CLICKED(AutoDualIcon, 15, triggerRearDefrostButton),
    NORDA_CLICKED(AutoDualText,  0, triggerAutoClimateOnOffButton),
    NORDA_CLICKED(AutoDualText,  1, triggerDualButton),
    NORDA_CLICKED(AutoDualText,  2, triggerACButton),
    NORDA_CLICKED(AutoDualText,  3, triggerMaxACButton),
};
#undef NORDA_HELD
#undef NORDA_CLICKED
// clang-format on

static const SingleCommand *findSingle(ClimateGroup group, int id)
{
    for (const SingleCommand &row : singleCommands) {
        if (row.group == group && row.id == id)
            return &row;
    }
    return nullptr;
}

/** The module-defined key (0 or 1) of an id in a text group, -1 for another key. */
static int customKey(ClimateGroup group, int id)
{
    const int first = group == ClimateGroup::ManualText ? 2 : 4;
    const bool isText = group == ClimateGroup::ManualText || group == ClimateGroup::AutoDualText;
    return isText && (id == first || id == first + 1) ? id - first : -1;
}

void Vantiq_Climate_Widget::sendSinglePress(ClimateGroup group, int id, bool pressed)
{
    if (customKey(group, id) >= 0) {
        sendCustomControl(customKey(group, id),
                          pressed ? TouchAction::Pressed : TouchAction::Released);
        return;
    }
    const SingleCommand *row = findSingle(group, id);
    if (!row || !row->frontPress)
        return;
    if (pressed)
        soundClickedBeep();
    sendToZone(row->frontPress, row->secondPress, pressed, !pressed);
}

void Vantiq_Climate_Widget::sendSingleClick(ClimateGroup group, int id)
{
    const SingleCommand *row = findSingle(group, id);
    if (customKey(group, id) >= 0 || (row && row->frontClick))
        soundClickedBeep();
    if (row && row->frontClick)
        sendToZone(row->frontClick, row->secondClick, true);
}

void Vantiq_Climate_Widget::onManualIconBtnPressed(int id)
{
    sendSinglePress(ClimateGroup::ManualIcon, id, true);
}

void Vantiq_Climate_Widget::onManualIconBtnClicked(int id)
{
    sendSingleClick(ClimateGroup::ManualIcon, id);
}

void Vantiq_Climate_Widget::onManualIconBtnReleased(int id)
{
    sendSinglePress(ClimateGroup::ManualIcon, id, false);
}

void Vantiq_Climate_Widget::onManualTextBtnPressed(int id)
{
    sendSinglePress(ClimateGroup::ManualText, id, true);
}

void Vantiq_Climate_Widget::onManualTextBtnClicked(int id)
{
    sendSingleClick(ClimateGroup::ManualText, id);
}

void Vantiq_Climate_Widget::onManualTextBtnReleased(int id)
{
    sendSinglePress(ClimateGroup::ManualText, id, false);
}

void Vantiq_Climate_Widget::onAutoDualIconBtnPressed(int id)
{
    sendSinglePress(ClimateGroup::AutoDualIcon, id, true);
}

void Vantiq_Climate_Widget::onAutoDualIconBtnClicked(int id)
{
    sendSingleClick(ClimateGroup::AutoDualIcon, id);
}

void Vantiq_Climate_Widget::onAutoDualIconBtnReleased(int id)
{
    sendSinglePress(ClimateGroup::AutoDualIcon, id, false);
}

void Vantiq_Climate_Widget::onAutoDualTextBtnPressed(int id)
{
    sendSinglePress(ClimateGroup::AutoDualText, id, true);
}

void Vantiq_Climate_Widget::onAutoDualTextBtnClicked(int id)
{
    sendSingleClick(ClimateGroup::AutoDualText, id);
}

void Vantiq_Climate_Widget::onAutoDualTextBtnReleased(int id)
{
    sendSinglePress(ClimateGroup::AutoDualText, id, false);
}

void Vantiq_Climate_Widget::onRearPressed()
{
    soundClickedBeep();
    sendToZone(&A::rearZoneButton, &A::secoundrearZoneButton, true, false);
}

void Vantiq_Climate_Widget::onRearClicked() {}

void Vantiq_Climate_Widget::onRearReleased()
{
    sendToZone(&A::rearZoneButton, &A::secoundrearZoneButton, false, true);
}

void Vantiq_Climate_Widget::onCloseClicked()
{
    soundClickedBeep();
}

} // namespace norda
