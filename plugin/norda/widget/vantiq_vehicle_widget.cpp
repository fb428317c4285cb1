#include "vantiq_vehicle_widget.h"

#include "debug.h"
#include "mem/settingsexe.h"
#include "ui_norda_vehicles.h"

namespace norda {

using Screen = Vantiq_Vehicle_Widget;

static constexpr int navigationPage = 1;
static constexpr ScreenCommands commands = {
    &VtqAdaptor::vehicleListBack,    &VtqAdaptor::vehicleListPrevious,
    &VtqAdaptor::vehicleListNext,    &VtqAdaptor::vehicleSettings,
    &VtqAdaptor::requestVehicleInfo, &VtqAdaptor::vehicleCustomControls,
};

Vantiq_Vehicle_Widget::Vantiq_Vehicle_Widget(QWidget *parent)
    : DataScreen(navigationPage, commands, parent), m_form(std::make_unique<Ui_norda_vehicles>())
{
    m_form->setupUi(this);
    m_settingsExe = new mem::SettingsExe(this);
    groupCustomKeys(m_form->key_P1, m_form->key_P2);
    connect(m_form->key_settings, &QPushButton::clicked, this, &Screen::onSettingsClicked);
    connectVtqAdaptor();
    send(commands.requestInfo);

    createNavigationBar();
    m_form->button_widget->hide();
    m_form->key_settings->hide();
}

Vantiq_Vehicle_Widget::~Vantiq_Vehicle_Widget()
{
    disconnectVtqAdaptor();
}

template <typename Operation>
void Vantiq_Vehicle_Widget::forEachConnection(Operation operation)
{
    operation(&VtqAdaptor::vehPopUpNotify, &Screen::onPopup);
    operation(&VtqAdaptor::vehCustomeCtrlLabels, &Screen::onVehCustomeCtrlLabels);
    operation(&VtqAdaptor::vehListInfo, &Screen::onVehListInfo);
    operation(&VtqAdaptor::vehGuiDisplayType, &Screen::onVehGuiDisplayType);
}

void Vantiq_Vehicle_Widget::connectVtqAdaptor()
{
    if (!adaptor())
        return;
    forEachConnection([this](auto signal, auto slot) {
        connect(adaptor(), signal, this, slot, Qt::UniqueConnection);
    });
}

void Vantiq_Vehicle_Widget::disconnectVtqAdaptor()
{
    if (!adaptor())
        return;
    forEachConnection(
        [this](auto signal, auto slot) { disconnect(adaptor(), signal, this, slot); });
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

} // namespace norda
