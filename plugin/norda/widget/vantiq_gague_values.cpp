// What the gauges screen shows: titles, values and the centre gauge's scale.

#include "debug.h"
#include "gaugetables.h"
#include "norda/squillogauge.h"
#include "ui_norda_gauge.h"
#include "vantiq_gague_widget.h"

namespace norda {

enum Corner { TopLeft = 1, TopRight, BottomLeft, BottomRight };

static const QString degrees = QStringLiteral(" ℉");
static const QString percent = QStringLiteral(" %");
static const QString rpmUnit = QStringLiteral(" RPM");
static const QString error = QStringLiteral("Error");

void Vantiq_Gaugue_Widget::onGaugeTitles(const QStringList &titles)
{
    if (titles.size() < gaugeCount) {
        NORDA_CRITICAL << "gauge titles: expected" << gaugeCount << "texts, got" << titles.size();
        return;
    }
    for (int index = 0; index < gaugeCount; ++index)
        m_titles[index]->setText(titles[index]);
    autoLabelFontSize(m_form->Txt_center_title, titles[centreGauge]);
}

void Vantiq_Gaugue_Widget::onCenterGaugeValue(const QString &value, const QString &unit,
                                              unsigned char position)
{
    static constexpr int longest = 10;
    LabelText &text = m_values[centreGauge];
    text.show(value.leftRef(longest), QLatin1Char(' '), unit.leftRef(longest));
    autoLabelFontSize(text.label(), text.label()->text());
    m_gauges[centreGauge].gauge->_setAnimationValue(position);
}

void Vantiq_Gaugue_Widget::onmNordacenterGaugeValue(const QString &value, const QString &,
                                                    unsigned char)
{
    // 65535, the module's mark for no engine speed, lies beyond this too.
    static constexpr int highest = 10000;
    static constexpr int rpmPerStep = 100;

    const int rpm = value.toInt();
    const bool valid = rpm <= highest;
    m_values[centreGauge].show(valid ? value : error, rpmUnit);
    m_gauges[centreGauge].gauge->_setAnimationValue(valid ? rpm / rpmPerStep : 0);
}

template <typename... Parts>
void Vantiq_Gaugue_Widget::showCorner(int index, int position, const Parts &...text)
{
    m_values[size_t(index)].show(text...);
    m_gauges[index].gauge->_setAnimationValue(position);
}

void Vantiq_Gaugue_Widget::onGaugeTLValue(const QString &value, unsigned char position)
{
    showCorner(TopLeft, position, value);
}

void Vantiq_Gaugue_Widget::onGaugeTRValue(const QString &value, unsigned char position)
{
    showCorner(TopRight, position, value);
}

void Vantiq_Gaugue_Widget::onGaugeBLValue(const QString &value, unsigned char position)
{
    showCorner(BottomLeft, position, value);
}

void Vantiq_Gaugue_Widget::onGaugeBRValue(const QString &value, unsigned char position)
{
    showCorner(BottomRight, position, value);
}

void Vantiq_Gaugue_Widget::onGaugeTLValueDual(const QString &value, const QString &unit,
                                              unsigned char position)
{
    showCorner(TopLeft, position, value, QLatin1Char(' '), unit);
}

void Vantiq_Gaugue_Widget::onGaugeTRValueDual(const QString &value, const QString &unit,
                                              unsigned char position)
{
    showCorner(TopRight, position, value, QLatin1Char(' '), unit);
}

void Vantiq_Gaugue_Widget::onGaugeBLValueDual(const QString &value, const QString &unit,
                                              unsigned char position)
{
    showCorner(BottomLeft, position, value, QLatin1Char(' '), unit);
}

void Vantiq_Gaugue_Widget::onGaugeBRValueDual(const QString &value, const QString &unit,
                                              unsigned char position)
{
    showCorner(BottomRight, position, value, QLatin1Char(' '), unit);
}

void Vantiq_Gaugue_Widget::onProperties_2Status(const QList<int> &properties)
{
    static constexpr int needed = 6;
    static constexpr int hottest = 250;
    static constexpr int fullLoad = 100;

    if (properties.size() < needed) {
        NORDA_WARNING << "vehicle properties: expected" << needed << "numbers, got"
                      << properties.size();
        return;
    }
    showProperty(TopLeft, properties.at(2), hottest, degrees);
    showProperty(TopRight, properties.at(3), hottest, degrees);
    showProperty(BottomLeft, properties.at(4), hottest, degrees);
    showProperty(BottomRight, properties.at(5), fullLoad, percent);
}

void Vantiq_Gaugue_Widget::showProperty(int index, int value, int maximum, const QString &unit)
{
    if (value >= 0 && value <= maximum)
        showCorner(index, value, NumberText(unsigned(value)).text(), unit);
    else
        m_values[size_t(index)].show(error, unit);
}

void Vantiq_Gaugue_Widget::autoLabelFontSize(QLabel *label, const QString &text)
{
    m_fontFit.fit(label, text);
}

void Vantiq_Gaugue_Widget::onCenterGaugeScale(const QString &first, const QStringList &rest)
{
    static constexpr int longest = 3;
    const QStringList entries = QStringList(first) + rest;
    for (int i = 0; i < qMin(entries.size(), m_scaleLabels.size()); ++i) {
        bool isNumber = false;
        entries[i].toInt(&isNumber);
        if (isNumber)
            m_scaleLabels[i]->setText(entries[i].left(longest));
        else
            NORDA_WARNING << "scale entry" << i << "is not a number:" << excerpt(entries[i]);
    }
}

void Vantiq_Gaugue_Widget::updateScale()
{
    const ScaleLayout &layout = scaleLayout(m_gauges[centreGauge].gauge->getNeedle());
    for (int i = 0; i < m_scaleLabels.size(); ++i) {
        QLabel *label = m_scaleLabels[i];
        QFont font = label->font();
        font.setPixelSize(layout.pixelSize);
        label->setFont(font);
        label->move(layout.positions[i].x, layout.positions[i].y);
        label->setFixedSize(layout.width, layout.height);
    }
}

} // namespace norda
