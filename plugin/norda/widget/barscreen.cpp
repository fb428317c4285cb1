#include "barscreen.h"

#include "hostactions.h"
#include "norda/modulecodes.h"
#include "norda_bar_widget.h"

namespace norda {

BarScreen::BarScreen(BarPage page, QWidget *parent)
    : QWidget(parent), m_page(page), m_adaptor(VtqAdaptor::instance())
{
}

// Every connection, those made for life included: data that comes while the children are deleted
// must not reach a screen that is half gone.
BarScreen::~BarScreen()
{
    if (m_adaptor)
        m_adaptor->disconnect(this);
}

void BarScreen::createNavigationBar()
{
    if (m_bar)
        return;
    m_bar = new Vantiq_Bar_Widget(this);
    m_bar->move(0, 620);
}

void BarScreen::requestMenu()
{
    send(&VtqAdaptor::NordaData_Request, int(ModulePage::Menu));
}

void BarScreen::soundClickedBeep()
{
    clickBeep();
}

void BarScreen::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_bar)
        m_bar->updateBtnChecked(int(m_page));
}

} // namespace norda
