#include "vantiq_parking_widget.h"

#include "customcontrols.h"
#include "debug.h"
#include "mem/settingsexe.h"
#include "ui_norda_parking.h"

#include <QButtonGroup>

namespace norda {

using Screen = Vantiq_Parking_Widget;

static constexpr int navigationPage = 3;
static constexpr ScreenCommands commands = {
    &VtqAdaptor::parkingListBack,    &VtqAdaptor::parkingListPrevious,
    &VtqAdaptor::parkingListNext,    &VtqAdaptor::parkingSettings,
    &VtqAdaptor::requestParkingInfo, &VtqAdaptor::parkingCustomControls,
};

Vantiq_Parking_Widget::Vantiq_Parking_Widget(QWidget *parent)
    : DataScreen(navigationPage, commands, parent), m_form(std::make_unique<Ui_norda_parking>())
{
    m_form->setupUi(this);
    m_settingsExe = new mem::SettingsExe(this);
    m_customLabels = {m_form->Txt_P1, m_form->Txt_P2};
    m_customKeys = groupCustomKeys(m_form->key_P1, m_form->key_P2);
    send(commands.requestInfo);

    m_form->button_widget->hide();
    m_form->key_settings->hide();
    createNavigationBar();
}

Vantiq_Parking_Widget::~Vantiq_Parking_Widget()
{
    disconnectVtqAdaptor();
}

template <typename Operation>
void Vantiq_Parking_Widget::forEachConnection(Operation operation)
{
    operation(&VtqAdaptor::parkPopUpNotify, &Screen::onPopup);
    operation(&VtqAdaptor::parkCustomControlLabels, &Screen::onCustomControlLabels);
    operation(&VtqAdaptor::parkListInfo, &Screen::onListInfo);
    operation(&VtqAdaptor::parkGuiDisplayType, &Screen::onGuiDisplayTypeChanged);
}

void Vantiq_Parking_Widget::connectVtqAdaptor()
{
    if (!adaptor())
        return;
    forEachConnection([this](auto signal, auto slot) {
        connect(adaptor(), signal, this, slot, Qt::UniqueConnection);
    });
}

void Vantiq_Parking_Widget::disconnectVtqAdaptor()
{
    if (!adaptor())
        return;
    forEachConnection(
        [this](auto signal, auto slot) { disconnect(adaptor(), signal, this, slot); });
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

} // namespace norda
