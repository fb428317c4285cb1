#include "norda_bar_widget.h"

#include "debug.h"
#include "hostactions.h"
#include "mem/settingsexe.h"
#include "norda/modulecodes.h"
#include "norda/vtqadaptor.h"
#include "ui_Nordalink_bar.h"

#include <QButtonGroup>

namespace norda {

struct PageRow
{
    Qx::Touch navigation;
    ModulePage request; // what the module is asked for
};

// By page id.
// clang-format off
static constexpr PageRow pages[] = {
    {Qx::TouchGauges,   ModulePage::None},
    {Qx::TouchVehicle,  ModulePage::None},
    {Qx::TouchClimate,  ModulePage::None},
    {Qx::TouchParking,  ModulePage::None},
    {Qx::TouchSettings, ModulePage::Menu},
    {Qx::TouchAbout,    ModulePage::Versions},
};
// clang-format on

Vantiq_Bar_Widget::Vantiq_Bar_Widget(QWidget *parent)
    : QWidget(parent), m_form(std::make_unique<Ui_Nordalink_bar>())
{
    m_form->setupUi(this);
    m_settingsExe = new mem::SettingsExe(this);
    init();
}

Vantiq_Bar_Widget::~Vantiq_Bar_Widget() = default;

void Vantiq_Bar_Widget::init()
{
    m_pages = new QButtonGroup(this);
    QPushButton *const keys[] = {m_form->norda_key_gauge,   m_form->norda_key_vehicle,
                                 m_form->norda_key_climate, m_form->norda_key_radar,
                                 m_form->norda_key_setting, m_form->norda_key_about};
    static_assert(std::size(keys) == std::size(pages));
    for (QPushButton *key : keys)
        m_pages->addButton(key, m_pages->buttons().size());
    m_pages->setExclusive(true);
    connect(m_pages, &QButtonGroup::idClicked, this, &Vantiq_Bar_Widget::onPageButGroupClicked);
}

void Vantiq_Bar_Widget::onPageButGroupClicked(int id)
{
    NORDA_TRACE << id;
    soundClickedBeep();
    if (id < 0 || id >= int(std::size(pages)))
        return;

    const PageRow &page = pages[id];
    navigateTo(page.navigation);
    VtqAdaptor *adaptor = VtqAdaptor::instance();
    if (page.request != ModulePage::None && adaptor)
        adaptor->NordaData_Request(int(page.request));
}

void Vantiq_Bar_Widget::updateBtnChecked(int page)
{
    if (QAbstractButton *key = m_pages->button(page)) {
        key->setChecked(true);
        return;
    }
    // An exclusive group does not let go of its last checked key.
    m_pages->setExclusive(false);
    for (QAbstractButton *key : m_pages->buttons())
        key->setChecked(false);
    m_pages->setExclusive(true);
}

void Vantiq_Bar_Widget::soundClickedBeep()
{
    clickBeep();
}

void Vantiq_Bar_Widget::onVantiqDsplChange(int display)
{
    NORDA_TRACE << display;
}

void Vantiq_Bar_Widget::update_barbtn_status(bool, bool, bool, bool) {}

void Vantiq_Bar_Widget::resumeItemChecked() {}

void Vantiq_Bar_Widget::showEvent(QShowEvent *) {}

} // namespace norda
