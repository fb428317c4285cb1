#include "norda_about_widget.h"

#include "debug.h"
#include "spplfctrl/spplatformcontrol.h"
#include "ui_norda_about.h"

namespace norda {

using Screen = Norda_About_Widget;

Norda_About_Widget::Norda_About_Widget(QWidget *parent)
    : BarScreen(BarPage::About, parent), m_form(std::make_unique<Ui_norda_about>())
{
    m_form->setupUi(this);
    createNavigationBar();
    m_form->key_item_1->setCaption(m_form->Interface_Fw_Label);
    m_form->key_item_2->setCaption(m_form->Radio_Fw_Label);
    m_form->key_item_4->setCaption(m_form->Time_Label);
    for (QLabel *line : {m_form->Interface_Fw_Label, m_form->Radio_Fw_Label, m_form->Time_Label})
        line->setTextFormat(Qt::PlainText);
    receive(&VtqAdaptor::NordaVerInfo, &Screen::onNordaVerInfo);
    receive(&VtqAdaptor::TimeInfo, &Screen::onTimeInfo);
    showAudioFirmware();
}

Norda_About_Widget::~Norda_About_Widget() = default;

void Norda_About_Widget::showAudioFirmware()
{
    static constexpr int prefixLength = 9; // of the platform's own text
    const QString version =
        QString::fromUtf8(spplfctrl::SPPlatformControl::GetInstance()->getAudioFirmwareVersion());
    m_form->Radio_Fw_Label->setText(QStringLiteral("Audio FW:") + version.mid(prefixLength));
}

void Norda_About_Widget::onNordaVerInfo(const QStringList &version)
{
    static constexpr int needed = 4;
    if (version.size() < needed) {
        NORDA_WARNING << "module version: expected" << needed << "texts, got" << version.size();
        return;
    }
    m_form->Interface_Fw_Label->setText(QStringLiteral("Interface FW:") +
                                        version.mid(1, 3).join(QLatin1Char('.')));
}

void Norda_About_Widget::onTimeInfo(const QStringList &digits)
{
    static constexpr const char *separators[] = {"/", "/", " ", ":", ":", ""};
    static constexpr int fields = int(std::size(separators));
    static constexpr int needed = 2 * fields;
    if (digits.size() < needed) {
        NORDA_WARNING << "module clock: expected" << needed << "texts, got" << digits.size();
        return;
    }
    QString text = QStringLiteral("Time:");
    for (int field = 0; field < fields; ++field)
        text += digits[2 * field] + digits[2 * field + 1] + QLatin1String(separators[field]);
    m_form->Time_Label->setText(text);
}

} // namespace norda
