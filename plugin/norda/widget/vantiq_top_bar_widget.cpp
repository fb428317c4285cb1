#include "vantiq_top_bar_widget.h"

#include "cm/colorcontrolnooutline.h"
#include "hostactions.h"
#include "norda/pages.h"
#include "translator.h"
#include "ui_vantiq_top_bar.h"

namespace norda {

static constexpr Translator::TextId pageNames[] = {Translator::PageGauges, Translator::PageVehicle,
                                                   Translator::PageClimate, Translator::PageParking,
                                                   Translator::PageSettings};

Vantiq_Top_Bar_Widget::Vantiq_Top_Bar_Widget(QWidget *parent)
    : QWidget(parent), m_form(std::make_unique<Ui_vantiq_top_bar>())
{
    m_form->setupUi(this);
    cm::ColorControlNoOutLine::setColorGroup(m_form->key_back, QStringLiteral("ColorGroup7"));
    m_form->key_back->setCheckable(true);
    m_form->key_settings->setCheckable(true);
    connect(m_form->key_back, &QPushButton::clicked, this, &Vantiq_Top_Bar_Widget::onBackClicked);
    connect(m_form->key_settings, &QPushButton::clicked, this,
            &Vantiq_Top_Bar_Widget::onSettingsClicked);
}

Vantiq_Top_Bar_Widget::~Vantiq_Top_Bar_Widget() = default;

void Vantiq_Top_Bar_Widget::setCurrentPageTitle(int page)
{
    if (page < 0 || page >= int(std::size(pageNames)))
        return;
    m_form->Txt_title->setText(Translator::instance()->text(pageNames[page]));
    m_form->key_settings->setVisible(page != int(BarPage::Settings));
}

void Vantiq_Top_Bar_Widget::soundClickedBeep()
{
    clickBeep();
}

void Vantiq_Top_Bar_Widget::onBackClicked()
{
    soundClickedBeep();
    emit gotoLastPage();
}

void Vantiq_Top_Bar_Widget::onSettingsClicked()
{
    soundClickedBeep();
    emit gotoSettings();
}

} // namespace norda
