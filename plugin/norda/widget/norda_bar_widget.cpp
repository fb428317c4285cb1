#include "norda_bar_widget.h"

#include "debug.h"
#include "mem/settingsexe.h"
#include "norda/vtqadaptor.h"
#include "svaudio/audioservice.h"
#include "touchevent.h"
#include "ui_Nordalink_bar.h"

#include <QButtonGroup>
#include <QCoreApplication>

namespace norda {

struct PageRow
{
    Qx::Touch navigation;
    int moduleRequest; // page that the module is asked for, 0 for none
};

// By page id.
// clang-format off
static constexpr PageRow pages[] = {
    {Qx::TouchGauges,    0},
    {Qx::TouchVehicle,   0},
    {Qx::TouchClimate,   0},
    {Qx::TouchParking,   0},
    {Qx::TouchSettings, 13},
    {Qx::TouchAbout,     5},
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
    QCoreApplication::postEvent(QCoreApplication::instance(),
                                new TouchEvent(page.navigation, -1, -1));
    VtqAdaptor *adaptor = VtqAdaptor::instance();
    if (page.moduleRequest && adaptor)
        adaptor->NordaData_Request(page.moduleRequest);
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
    svaudio::AudioService::instance()->doBeep(0);
}

void Vantiq_Bar_Widget::onVantiqDsplChange(int display)
{
    NORDA_TRACE << display;
}

void Vantiq_Bar_Widget::update_barbtn_status(bool, bool, bool, bool) {}

void Vantiq_Bar_Widget::resumeItemChecked() {}

void Vantiq_Bar_Widget::showEvent(QShowEvent *) {}

} // namespace norda
