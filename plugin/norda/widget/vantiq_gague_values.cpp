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
    const QString text = value.left(longest) + QLatin1Char(' ') + unit.left(longest);
    autoLabelFontSize(m_form->Txt_center_value, text);
    m_form->Txt_center_value->setText(text);
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
    m_form->Txt_center_value->setText(valid ? value + QStringLiteral(" RPM")
                                            : QStringLiteral("Error RPM"));
    m_gauges[centreGauge].gauge->_setAnimationValue(valid ? rpm / rpmPerStep : 0);
}

void Vantiq_Gaugue_Widget::showCorner(int index, const QString &text, int position)
{
    m_values[index]->setText(text);
    m_gauges[index].gauge->_setAnimationValue(position);
}

void Vantiq_Gaugue_Widget::onGaugeTLValue(const QString &value, unsigned char position)
{
    showCorner(TopLeft, value, position);
}

void Vantiq_Gaugue_Widget::onGaugeTRValue(const QString &value, unsigned char position)
{
    showCorner(TopRight, value, position);
}

void Vantiq_Gaugue_Widget::onGaugeBLValue(const QString &value, unsigned char position)
{
    showCorner(BottomLeft, value, position);
}

void Vantiq_Gaugue_Widget::onGaugeBRValue(const QString &value, unsigned char position)
{
    showCorner(BottomRight, value, position);
}

void Vantiq_Gaugue_Widget::onGaugeTLValueDual(const QString &value, const QString &unit,
                                              unsigned char position)
{
    showCorner(TopLeft, value + QLatin1Char(' ') + unit, position);
}

void Vantiq_Gaugue_Widget::onGaugeTRValueDual(const QString &value, const QString &unit,
                                              unsigned char position)
{
    showCorner(TopRight, value + QLatin1Char(' ') + unit, position);
}

void Vantiq_Gaugue_Widget::onGaugeBLValueDual(const QString &value, const QString &unit,
                                              unsigned char position)
{
    showCorner(BottomLeft, value + QLatin1Char(' ') + unit, position);
}

void Vantiq_Gaugue_Widget::onGaugeBRValueDual(const QString &value, const QString &unit,
                                              unsigned char position)
{
    showCorner(BottomRight, value + QLatin1Char(' ') + unit, position);
}

void Vantiq_Gaugue_Widget::onProperties_2Status(QList<int> properties)
{
    static constexpr int needed = 6;
    static constexpr int hottest = 250;
    static constexpr int fullLoad = 100;

    if (properties.size() < needed) {
        NORDA_WARNING << "vehicle properties: expected" << needed << "numbers, got"
                      << properties.size();
        return;
    }
    showProperty(TopLeft, properties[2], hottest, degrees);
    showProperty(TopRight, properties[3], hottest, degrees);
    showProperty(BottomLeft, properties[4], hottest, degrees);
    showProperty(BottomRight, properties[5], fullLoad, percent);
}

void Vantiq_Gaugue_Widget::showProperty(int index, int value, int maximum, const QString &unit)
{
    if (value >= 0 && value <= maximum)
        showCorner(index, QString::number(value) + unit, value);
    else
        m_values[index]->setText(QStringLiteral("Error") + unit);
}

void Vantiq_Gaugue_Widget::autoLabelFontSize(QLabel *label, const QString &text)
{
    static constexpr int largest = 30;
    QFont probe = label->font();
    int pixels = largest;
    for (; pixels > 1; --pixels) {
        probe.setPixelSize(pixels);
        if (QFontMetrics(probe).horizontalAdvance(text) <= label->width())
            break;
    }
    // A fresh font on purpose: family and weight of the label's previous one are dropped.
    QFont font;
    font.setPixelSize(pixels);
    label->setFont(font);
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
        label->setGeometry(layout.positions[i].x, layout.positions[i].y, layout.width,
                           layout.height);
    }
}

} // namespace norda
