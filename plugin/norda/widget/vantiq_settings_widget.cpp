#include "vantiq_settings_widget.h"

#include "norda_bar_widget.h"
#include "ui_norda_vantiq_settings.h"

namespace norda {

static constexpr int navigationPage = 4;

Vantiq_Settings_Widget::Vantiq_Settings_Widget(QWidget *parent)
    : QWidget(parent), m_form(std::make_unique<Ui_norda_vantiq_settings>())
{
    m_form->setupUi(this);
    m_bar = new Vantiq_Bar_Widget(this);
    m_bar->move(0, 620);
}

Vantiq_Settings_Widget::~Vantiq_Settings_Widget() = default;

void Vantiq_Settings_Widget::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_bar->updateBtnChecked(navigationPage);
}

} // namespace norda
