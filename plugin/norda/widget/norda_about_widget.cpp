#include "norda_about_widget.h"

#include "norda_bar_widget.h"
#include "ui_norda_about.h"

namespace norda {

static constexpr int navigationPage = 5;

Norda_About_Widget::Norda_About_Widget(QWidget *parent)
    : QWidget(parent), m_form(std::make_unique<Ui_norda_about>())
{
    m_form->setupUi(this);
    m_bar = new Vantiq_Bar_Widget(this);
    m_bar->move(0, 620);
}

Norda_About_Widget::~Norda_About_Widget() = default;

void Norda_About_Widget::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_bar->updateBtnChecked(navigationPage);
}

} // namespace norda
