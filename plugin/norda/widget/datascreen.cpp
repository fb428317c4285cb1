#include "datascreen.h"

#include "cm/statusbarcontrol.h"
#include "customcontrols.h"
#include "debug.h"
#include "eventhandler.h"
#include "norda/vtqservice.h"
#include "slabelmanager.h"
#include "sourcecode.h"
#include "srcdsplctrl.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QLabel>

namespace norda {

struct DisplayTypeRow
{
    DisplayType type;
    bool list;
    bool popup;
};

// clang-format off
static constexpr DisplayTypeRow displayTypes[] = {
    {DisplayType::OwnPage, false, false},
    {DisplayType::List,    true,  false},
    {DisplayType::Popup,   false, true },
    {DisplayType::List16,  true,  false},
    {DisplayType::List17,  true,  false},
    {DisplayType::List18,  true,  false},
};
// clang-format on

DataScreen::DataScreen(BarPage page, const ScreenCommands &commands, const StepBindings &steps,
                       QWidget *parent)
    : BarScreen(page, parent), m_commands(commands), m_steps(steps)
{
}

DataScreen::~DataScreen() = default;

void DataScreen::connectVtqAdaptor()
{
    if (!adaptor())
        return;
    for (const AdaptorBinding &step : m_steps)
        step.connect(adaptor(), this);
    // A step that was connected again would now come after it.
    if (m_steps.last && m_steps.last->disconnect(adaptor(), this))
        connectLastReceiver();
}

void DataScreen::disconnectVtqAdaptor()
{
    if (!adaptor())
        return;
    for (const AdaptorBinding &step : m_steps)
        step.disconnect(adaptor(), this);
}

void DataScreen::connectLastReceiver()
{
    if (adaptor())
        m_steps.last->connect(adaptor(), this);
}

void DataScreen::setUpLabels()
{
    for (QLabel *label : findChildren<QLabel *>()) {
        label->setTextFormat(Qt::PlainText);
        label->setFixedSize(label->size());
    }
}

QButtonGroup *DataScreen::groupCustomKeys(QAbstractButton *first, QAbstractButton *second)
{
    auto *keys = new QButtonGroup(this);
    keys->setExclusive(false);
    keys->addButton(first, 0);
    keys->addButton(second, 1);
    first->setCheckable(true);
    second->setCheckable(true);
    connect(keys, &QButtonGroup::idClicked, this, &DataScreen::onButtonClicked);
    connect(keys, &QButtonGroup::idPressed, this, &DataScreen::onButtonPressed);
    connect(keys, &QButtonGroup::idReleased, this, &DataScreen::onButtonReleased);
    return keys;
}

void DataScreen::scrollLongTexts(const QList<ScrollLabel *> &labels)
{
    auto *scroller = new SLabelManager(this);
    for (ScrollLabel *label : labels)
        scroller->addLabel(label);
    scroller->setAutoRepeat(true);
}

void DataScreen::onEnter()
{
    send(m_commands.requestInfo);
}

void DataScreen::showEvent(QShowEvent *event)
{
    cm::StatusBarControl::instance()->sethide(false);
    BarScreen::showEvent(event);
}

DataScreen::DisplayWish DataScreen::displayWish(unsigned char type)
{
    for (const DisplayTypeRow &known : displayTypes) {
        if (known.type == DisplayType(type))
            return {known.list, known.popup};
    }
    NORDA_WARNING << "unknown display type" << int(type);
    return {};
}

void DataScreen::followDisplayType(unsigned char type)
{
    m_wanted = displayWish(type);
    createPopup(m_wanted.popup);
    createListview(m_wanted.list);
}

// The module's lists and popups are not drawn here. A payload by itself never opens anything: only
// a display type does.
void DataScreen::onPopup(const QString &, const QStringList &, const QStringList &,
                         const QByteArray &)
{
    createPopup(false);
}

void DataScreen::createPopup(bool show)
{
    NORDA_TRACE << show;
}

void DataScreen::createListview(bool show)
{
    NORDA_TRACE << show;
}

void DataScreen::onPopupKeyClicked(int)
{
    soundClickedBeep();
}

void DataScreen::onListBackClicked()
{
    soundClickedBeep();
    send(m_commands.listBack);
}

void DataScreen::onListUpClicked()
{
    soundClickedBeep();
    send(m_commands.listPrevious);
}

void DataScreen::onListDnClicked()
{
    soundClickedBeep();
    send(m_commands.listNext);
}

void DataScreen::onListItemClicked(int)
{
    soundClickedBeep();
}

void DataScreen::onListCustomItemPressed(int) {}

void DataScreen::onListCustomItemReleased(int) {}

void DataScreen::onListCustomItemClicked(int)
{
    soundClickedBeep();
}

void DataScreen::onShowListview()
{
    NORDA_TRACE;
}

ScreenCommands::ControlCommand DataScreen::customControl() const
{
    return m_commands.customControl;
}

void DataScreen::sendCustomControl(int id, TouchAction action)
{
    if (const auto key = moduleKey(id))
        send(customControl(), static_cast<unsigned char>(*key), static_cast<unsigned char>(action));
}

void DataScreen::onButtonPressed(int id)
{
    sendCustomControl(id, TouchAction::Pressed);
}

void DataScreen::onButtonClicked(int)
{
    soundClickedBeep();
}

void DataScreen::onButtonReleased(int id)
{
    sendCustomControl(id, TouchAction::Released);
}

void DataScreen::onSettingsClicked()
{
    soundClickedBeep();
    send(m_commands.settings);
}

void DataScreen::UpdataVtqSourceDspl()
{
    static constexpr unsigned char kind = 0x84;
    static constexpr unsigned char volume = 100;
    static constexpr unsigned char state = 1;
    static constexpr unsigned char side = 0x80;

    SrcDsplCtrl *control = EventHandler::instance()->control();
    const int source = control->currentSrc();
    NORDA_TRACE << source;
    const unsigned char code = moduleSourceCode(source, control->currentDspl());
    NORDA_TRACE << "===syncRadioStatus===" << code << volume << state << side << side;
    VtqService::instance()->syncRadioStatus(code, kind, volume, state, side, side);
}

} // namespace norda
