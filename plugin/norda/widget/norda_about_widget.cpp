#include "norda_about_widget.h"

#include "debug.h"
#include "norda/vtqadaptor.h"
#include "norda_bar_widget.h"
#include "spplfctrl/spplatformcontrol.h"
#include "ui_norda_about.h"

namespace norda {

using Screen = Norda_About_Widget;

static constexpr int navigationPage = 5;

/** Whether a list is long enough to be read; one that is not is told. */
static bool isComplete(const char *what, const QStringList &list, int needed)
{
    if (list.size() >= needed)
        return true;
    NORDA_WARNING << what << "expected" << needed << "texts, got" << list.size();
    return false;
}

Norda_About_Widget::Norda_About_Widget(QWidget *parent)
    : QWidget(parent), m_form(std::make_unique<Ui_norda_about>())
{
    m_form->setupUi(this);
    m_bar = new Vantiq_Bar_Widget(this);
    m_bar->move(0, 620);
    m_form->key_item_1->setCaption(m_form->Interface_Fw_Label);
    m_form->key_item_2->setCaption(m_form->Radio_Fw_Label);
    m_form->key_item_4->setCaption(m_form->Time_Label);
    for (QLabel *line : {m_form->Interface_Fw_Label, m_form->Radio_Fw_Label, m_form->Time_Label})
        line->setTextFormat(Qt::PlainText);
    if (VtqAdaptor *adaptor = VtqAdaptor::instance()) {
        connect(adaptor, &VtqAdaptor::NordaVerInfo, this, &Screen::onNordaVerInfo);
        connect(adaptor, &VtqAdaptor::TimeInfo, this, &Screen::onTimeInfo);
    }
    showAudioFirmware();
}

// No data may come while the lines are deleted.
Norda_About_Widget::~Norda_About_Widget()
{
    if (VtqAdaptor *adaptor = VtqAdaptor::instance())
        adaptor->disconnect(this);
}

void Norda_About_Widget::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_bar->updateBtnChecked(navigationPage);
}

void Norda_About_Widget::showAudioFirmware()
{
    static constexpr int prefixLength = 9; // of the platform's own text
    const QString version =
        QString::fromUtf8(spplfctrl::SPPlatformControl::GetInstance()->getAudioFirmwareVersion());
    m_form->Radio_Fw_Label->setText(QStringLiteral("Audio FW:") + version.mid(prefixLength));
}

void Norda_About_Widget::onNordaVerInfo(const QStringList &version)
{
    if (!isComplete("module version:", version, 4))
        return;
    m_form->Interface_Fw_Label->setText(QStringLiteral("Interface FW:") +
                                        version.mid(1, 3).join(QLatin1Char('.')));
}

void Norda_About_Widget::onTimeInfo(const QStringList &digits)
{
    static constexpr const char *behind[] = {"/", "/", " ", ":", ":", ""};
    static constexpr int fields = int(std::size(behind));
    if (!isComplete("module clock:", digits, 2 * fields))
        return;
    QString text = QStringLiteral("Time:");
    for (int field = 0; field < fields; ++field)
        text += digits[2 * field] + digits[2 * field + 1] + QLatin1String(behind[field]);
    m_form->Time_Label->setText(text);
}

} // namespace norda
