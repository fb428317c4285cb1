#include "datascreen.h"

#include "cm/statusbarcontrol.h"
#include "customcontrols.h"
#include "debug.h"
#include "eventhandler.h"
#include "norda/vtqservice.h"
#include "norda_bar_widget.h"
#include "sourcecode.h"
#include "srcdsplctrl.h"
#include "svaudio/audioservice.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QLabel>

namespace norda {

struct DisplayType
{
    unsigned char code;
    bool list;
    bool popup;
};

// clang-format off
static constexpr DisplayType displayTypes[] = {
    { 0, false, false},
    { 1, true,  false},
    { 2, false, true },
    {16, true,  false},
    {17, true,  false},
    {18, true,  false},
};
// clang-format on

DataScreen::DataScreen(int page, const ScreenCommands &commands, QWidget *parent)
    : QWidget(parent), m_page(page), m_commands(commands), m_adaptor(VtqAdaptor::instance())
{
}

// The connections made for life, too: data that comes while the children are deleted must not reach
// a screen that is half gone.
DataScreen::~DataScreen()
{
    if (m_adaptor)
        m_adaptor->disconnect(this);
}

void DataScreen::createNavigationBar()
{
    if (m_bar)
        return;
    m_bar = new Vantiq_Bar_Widget(this);
    m_bar->move(0, 620);
}

void DataScreen::showTextsLiterally()
{
    for (QLabel *label : findChildren<QLabel *>())
        label->setTextFormat(Qt::PlainText);
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

void DataScreen::onEnter()
{
    send(m_commands.requestInfo);
}

void DataScreen::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    cm::StatusBarControl::instance()->sethide(false);
    if (m_bar)
        m_bar->updateBtnChecked(m_page);
}

DataScreen::DisplayWish DataScreen::displayWish(unsigned char type)
{
    for (const DisplayType &known : displayTypes) {
        if (known.code == type)
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

void DataScreen::onPopupKeyClicked(int key)
{
    Q_UNUSED(key)
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

void DataScreen::onListItemClicked(int row)
{
    Q_UNUSED(row)
    soundClickedBeep();
}

void DataScreen::onListCustomItemPressed(int item)
{
    Q_UNUSED(item)
}

void DataScreen::onListCustomItemReleased(int item)
{
    Q_UNUSED(item)
}

void DataScreen::onListCustomItemClicked(int item)
{
    Q_UNUSED(item)
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

void DataScreen::sendCustomControl(int id, ControlAction action)
{
    if (const unsigned char control = customControlCode(id))
        send(customControl(), control, static_cast<unsigned char>(action));
}

void DataScreen::onButtonPressed(int id)
{
    sendCustomControl(id, ControlPressed);
}

void DataScreen::onButtonClicked(int id)
{
    Q_UNUSED(id)
    soundClickedBeep();
}

void DataScreen::onButtonReleased(int id)
{
    sendCustomControl(id, ControlReleased);
}

void DataScreen::onSettingsClicked()
{
    soundClickedBeep();
    send(m_commands.settings);
}

void DataScreen::soundClickedBeep()
{
    svaudio::AudioService::instance()->doBeep(0);
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
