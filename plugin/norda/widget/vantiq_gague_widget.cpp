#include "vantiq_gague_widget.h"

#include "customcontrols.h"
#include "debug.h"
#include "gaugetables.h"
#include "mem/settingsexe.h"
#include "norda/squillogauge.h"
#include "slabelmanager.h"
#include "ui_norda_gauge.h"

#include <QButtonGroup>

namespace norda {

using Screen = Vantiq_Gaugue_Widget;

static constexpr int navigationPage = 0;
static constexpr ScreenCommands commands = {
    &VtqAdaptor::gaugesListBack, &VtqAdaptor::gaugesListPrevious, &VtqAdaptor::gaugesListNext,
    &VtqAdaptor::gaugesSettings, &VtqAdaptor::requestGaugesInfo,  &VtqAdaptor::gaugesCustomControls,
};

using MenuCommand = void (VtqAdaptor::*)(unsigned char action);
static constexpr MenuCommand menuCommands[gaugeCount] = {
    &VtqAdaptor::centerGaugeMenu, &VtqAdaptor::gaugeTLMenu, &VtqAdaptor::gaugeTRMenu,
    &VtqAdaptor::gaugeBLMenu,     &VtqAdaptor::gaugeBRMenu,
};

enum Corner { TopLeft = 1, TopRight, BottomLeft, BottomRight };

static const QString degrees = QStringLiteral(" ℉");
static const QString percent = QStringLiteral(" %");

Vantiq_Gaugue_Widget::Vantiq_Gaugue_Widget(QWidget *parent)
    : DataScreen(navigationPage, commands, parent), m_form(std::make_unique<Ui_norda_gauge>())
{
    m_form->setupUi(this);
    m_settingsExe = new mem::SettingsExe(this);
    init();

    // These two are never dropped. The second receiver of the centre value must come after the
    // one that connectVtqAdaptor() made: what it writes is what stays on screen.
    connect(adaptor(), &VtqAdaptor::Properties2TextInfo, this, &Screen::onProperties_2Status);
    connect(adaptor(), &VtqAdaptor::centerGaugeValueNotify, this,
            &Screen::onmNordacenterGaugeValue);
}

Vantiq_Gaugue_Widget::~Vantiq_Gaugue_Widget()
{
    disconnectVtqAdaptor();
}

void Vantiq_Gaugue_Widget::init()
{
    initUI();
    initGaugesDbd();
    InitNordaUi();
    connectVtqAdaptor();
}

void Vantiq_Gaugue_Widget::initUI()
{
    createNavigationBar();

    // Touches go through the texts to the gauges and keys beneath.
    const QWidgetList overlays = {
        m_form->up_left_widget,    m_form->up_right_widget, m_form->down_left_widget,
        m_form->down_right_widget, m_form->scale_widget,    m_form->Indicator_lb_2,
        m_form->Txt_ready,         m_form->Txt_P1,          m_form->Txt_P2};
    for (QWidget *overlay : overlays)
        overlay->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_form->gagus_widget_1->lower();

    m_presetTexts = {m_form->Txt_P1, m_form->Txt_P2};
    m_values = {m_form->Txt_center_value, m_form->Txt_up_left_value, m_form->Txt_up_right_value,
                m_form->Txt_down_left_value, m_form->Txt_down_right_value};
    m_titles = {m_form->Txt_center_title, m_form->Txt_up_left_title, m_form->Txt_up_right_title,
                m_form->Txt_down_left_title, m_form->Txt_down_right_title};
    m_scaleLabels = {m_form->Txt_scale_1,  m_form->Txt_scale_2, m_form->Txt_scale_3,
                     m_form->Txt_scale_4,  m_form->Txt_scale_5, m_form->Txt_scale_6,
                     m_form->Txt_scale_7,  m_form->Txt_scale_8, m_form->Txt_scale_9,
                     m_form->Txt_scale_10, m_form->Txt_scale_11};

    auto *scrolling = new SLabelManager(this);
    scrolling->addLabel(m_form->Txt_fork);
    scrolling->setAutoRepeat(true);

    m_presetKeys = groupCustomKeys(m_form->key_P1, m_form->key_P2);
    connect(m_form->key_settings, &QPushButton::clicked, this, &Screen::onSettingsClicked);
}

void Vantiq_Gaugue_Widget::initGaugesDbd()
{
    for (int index = 0; index < gaugeCount; ++index) {
        const GaugeRow &row = gaugeRow(index);
        const GaugeStyle &style = gaugeStyle(index, needleStyle);

        SGauge record;
        record.gauge = new SQuilloGauge(m_form->gagus_widget_1);
        record.geometry = QRect(row.x, row.y, row.size, row.size);
        record.backgroundImage = QString::fromLatin1(style.background);
        record.needleImage = QString::fromLatin1(style.pointer);
        record.needle = style.needle;
        record.rotationStart = row.rotationStart;
        record.rotationEnd = row.rotationEnd;
        record.pointerX = record.pointerY = row.pivot;
        m_gauges.append(record);

        SQuilloGauge *gauge = record.gauge;
        updateSQuilloBgImg(index, record.backgroundImage);
        gauge->setImageDir(record.needleImage);
        gauge->setZeroImageDir(record.zeroImage);
        gauge->setNeedle(record.needle);
        gauge->setGeometry(record.geometry);
        gauge->setRotationRange(record.rotationStart, record.rotationEnd);
        gauge->setPointerXY(record.pointerX, record.pointerY);
        gauge->setGaugeId(index);
        gauge->setMixValue(row.fullScale);
        gauge->show();
        connect(gauge, &SQuilloGauge::touch, this, &Screen::onGaugeTouch);
    }
}

void Vantiq_Gaugue_Widget::InitNordaUi()
{
    m_form->button_widget->hide();
    m_form->key_settings->hide();

    for (int index = 0; index < gaugeCount; ++index) {
        if (index != centreGauge)
            m_values[index]->clear();
        m_titles[index]->setText(QString::fromLatin1(gaugeRow(index).title));
    }

    for (int number = 10; number <= 100; number += 10)
        m_defaultScale.append(QString::number(number));
    onCenterGaugeScale(QStringLiteral("0"), m_defaultScale);
}

template <typename Operation>
void Vantiq_Gaugue_Widget::forEachConnection(Operation operation)
{
    operation(&VtqAdaptor::gauPopUpNotify, &Screen::onPopup);
    operation(&VtqAdaptor::gaugeTitlesNotify, &Screen::onGaugeTitles);
    operation(&VtqAdaptor::centerGaugeValueNotify, &Screen::onCenterGaugeValue);
    operation(&VtqAdaptor::gaugeTLValueNotify, &Screen::onGaugeTLValue);
    operation(&VtqAdaptor::gaugeTLValueDualNotify, &Screen::onGaugeTLValueDual);
    operation(&VtqAdaptor::gaugeTRValueNotify, &Screen::onGaugeTRValue);
    operation(&VtqAdaptor::gaugeTRValueDualNotify, &Screen::onGaugeTRValueDual);
    operation(&VtqAdaptor::gaugeBLValueNotify, &Screen::onGaugeBLValue);
    operation(&VtqAdaptor::gaugeBLValueDualNotify, &Screen::onGaugeBLValueDual);
    operation(&VtqAdaptor::gaugeBRValueNotify, &Screen::onGaugeBRValue);
    operation(&VtqAdaptor::gaugeBRValueDualNotify, &Screen::onGaugeBRValueDual);
    operation(&VtqAdaptor::peakIndicatorNotify, &Screen::onPeakIndicator);
    operation(&VtqAdaptor::peakIndicatorTextNotify, &Screen::onPeakIndicatorText);
    operation(&VtqAdaptor::gauTopBarTextNotify, &Screen::onTopBarText);
    operation(&VtqAdaptor::gaugeGraphicalSettingNotify, &Screen::onGaugeGraphicalSetting);
    operation(&VtqAdaptor::shifterArrowIndicatorNotify, &Screen::onShifterArrowIndicator);
    operation(&VtqAdaptor::centerGaugePeakColorNotify, &Screen::ondCenterGaugePeakColor);
    operation(&VtqAdaptor::gauCustomControlLabelsNotify, &Screen::onCustomControlLabels);
    operation(&VtqAdaptor::listInfoNotify, &Screen::onListInfo);
    operation(&VtqAdaptor::activePresetStatusNotify, &Screen::onActivePresetStatus);
    operation(&VtqAdaptor::centerGaugeRedLinePositionNotify, &Screen::onCenterGaugeRedLinePosition);
    operation(&VtqAdaptor::guiDisplayTypeNotify, &Screen::onGuiDisplayTypeChanged);
}

void Vantiq_Gaugue_Widget::connectVtqAdaptor()
{
    if (!adaptor())
        return;
    forEachConnection([this](auto signal, auto slot) {
        connect(adaptor(), signal, this, slot, Qt::UniqueConnection);
    });

    // Connected again after a disconnection, the first receiver of the centre value would now come
    // behind the second.
    if (disconnect(adaptor(), &VtqAdaptor::centerGaugeValueNotify, this,
                   &Screen::onmNordacenterGaugeValue))
        connect(adaptor(), &VtqAdaptor::centerGaugeValueNotify, this,
                &Screen::onmNordacenterGaugeValue);

    send(commands.requestInfo);
}

void Vantiq_Gaugue_Widget::disconnectVtqAdaptor()
{
    if (!adaptor())
        return;
    forEachConnection(
        [this](auto signal, auto slot) { disconnect(adaptor(), signal, this, slot); });
}

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
            NORDA_WARNING << "scale entry" << i << "is not a number:" << entries[i];
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

void Vantiq_Gaugue_Widget::onGaugeGraphicalSetting(const QByteArray &styles,
                                                   const QByteArray &zeroPositions)
{
    const int stated = qMin(zeroPositions.size(), gaugeCount);
    for (int index = 0; index < qMin(stated, styles.size()); ++index) {
        m_styles[size_t(index)] = static_cast<unsigned char>(styles[index]);
        m_gauges[index].gauge->setZeroPosition(static_cast<unsigned char>(zeroPositions[index]));
    }
    if (styles.size() < stated)
        NORDA_WARNING << "graphical setting: expected" << stated << "styles, got" << styles.size();
    updateGaugesDbd();
}

void Vantiq_Gaugue_Widget::updateGaugesDbd()
{
    for (int index = 0; index < gaugeCount; ++index) {
        const GaugeStyle &style = gaugeStyle(index, m_styles[size_t(index)]);
        SGauge &record = m_gauges[index];
        record.needleImage = QString::fromLatin1(style.pointer);
        record.needle = style.needle;

        updateSQuilloBgImg(index, QString::fromLatin1(style.background));
        record.gauge->setImageDir(record.needleImage);
        record.gauge->setZeroImageDir(record.zeroImage);
        record.gauge->setNeedle(record.needle);
    }
}

void Vantiq_Gaugue_Widget::updateSQuilloBgImg(int index, const QString &image)
{
    SGauge &record = m_gauges[index];
    record.backgroundImage = image;
    QPalette palette = record.gauge->palette();
    palette.setBrush(QPalette::Window, m_images.pixmap(image));
    record.gauge->setAutoFillBackground(record.autoFill);
    record.gauge->setPalette(palette);
}

void Vantiq_Gaugue_Widget::onPeakIndicator(unsigned char shown)
{
    m_form->Txt_ready->setVisible(shown != 0);
}

void Vantiq_Gaugue_Widget::onPeakIndicatorText(const QString &text)
{
    static constexpr int longest = 6;
    m_form->Txt_ready->setText(text.left(longest));
}

void Vantiq_Gaugue_Widget::ondCenterGaugePeakColor(unsigned char code)
{
    const QString sheet = QString::fromLatin1(peakStyleSheet(code));
    if (m_form->Txt_ready->styleSheet() != sheet)
        m_form->Txt_ready->setStyleSheet(sheet);
}

void Vantiq_Gaugue_Widget::onShifterArrowIndicator(unsigned char on)
{
    m_images.show(m_form->Indicator_lb_2,
                  on ? QStringLiteral(":/icon/gaugesicon/gauge_indicator_on.png")
                     : QStringLiteral(":/icon/gaugesicon/gauge_indicator_off.png"));
}

void Vantiq_Gaugue_Widget::onTopBarText(const QString &text)
{
    m_form->Txt_fork->setText(text);
}

void Vantiq_Gaugue_Widget::onActivePresetStatus(unsigned char preset)
{
    NORDA_TRACE << preset;
}

void Vantiq_Gaugue_Widget::onCenterGaugeRedLinePosition(unsigned char position)
{
    NORDA_TRACE << position;
}

void Vantiq_Gaugue_Widget::onCustomControlLabels(const QStringList &captions,
                                                 const QByteArray &states)
{
    updateCustomKeyStateText(captions, states);
}

void Vantiq_Gaugue_Widget::updateCustomKeyStateText(const QStringList &captions,
                                                    const QByteArray &states)
{
    const CustomControls controls = {{m_presetKeys->button(0), m_presetKeys->button(1)},
                                     {m_presetTexts[0], m_presetTexts[1]}};
    applyCustomControlLabels(controls, captions, states);
}

void Vantiq_Gaugue_Widget::onListInfo(const QString &title, const QByteArray &types,
                                      const QStringList &rows, const QList<QVariant> &values,
                                      const QByteArray &states)
{
    NORDA_TRACE << title << types << rows << values << states;
    createListview(false);
}

void Vantiq_Gaugue_Widget::onGuiDisplayTypeChanged(unsigned char type)
{
    followDisplayType(type);
}

void Vantiq_Gaugue_Widget::onGaugeTouch(bool pressed, int id)
{
    if (pressed)
        soundClickedBeep();
    if (id >= 0 && id < gaugeCount)
        send(menuCommands[id],
             static_cast<unsigned char>(pressed ? ControlPressed : ControlReleased));
}

} // namespace norda
