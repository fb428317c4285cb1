#include "vantiq_climate_widget.h"

#include "ui_norda_vantiq_climate.h"

namespace norda {

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

Vantiq_Climate_Widget::Vantiq_Climate_Widget(QWidget *parent)
    : DataScreen(navigationPage, frontCommands, parent)
    , m_form(std::make_unique<Ui_norda_vantiq_climate>())
{
    m_form->setupUi(this);
    createNavigationBar();
    m_form->button_widget->hide();
    m_form->key_settings->hide();
}

Vantiq_Climate_Widget::~Vantiq_Climate_Widget() = default;

void Vantiq_Climate_Widget::onEnter()
{
    send(frontCommands.requestInfo);
    send(secondCommands.requestInfo);
}

void Vantiq_Climate_Widget::resume()
{
    onEnter();
}

void Vantiq_Climate_Widget::onGuiDisplayTypeChanged(unsigned char type)
{
    followDisplayType(type);
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

} // namespace norda
