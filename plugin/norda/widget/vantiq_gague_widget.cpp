#include "vantiq_gague_widget.h"

#include "customcontrols.h"
#include "debug.h"
#include "gaugetables.h"
#include "mem/settingsexe.h"
#include "norda/squillogauge.h"
#include "ui_norda_gauge.h"

#include <QButtonGroup>

namespace norda {

using Screen = Vantiq_Gaugue_Widget;

static constexpr ScreenCommands commands = {
    &VtqAdaptor::gaugesListBack, &VtqAdaptor::gaugesListPrevious, &VtqAdaptor::gaugesListNext,
    &VtqAdaptor::gaugesSettings, &VtqAdaptor::requestGaugesInfo,  &VtqAdaptor::gaugesCustomControls,
};
static constexpr AdaptorBinding steps[] = {
    binding<&VtqAdaptor::gauPopUpNotify, &Screen::onPopup>,
    binding<&VtqAdaptor::gaugeTitlesNotify, &Screen::onGaugeTitles>,
    binding<&VtqAdaptor::centerGaugeValueNotify, &Screen::onCenterGaugeValue>,
    binding<&VtqAdaptor::gaugeTLValueNotify, &Screen::onGaugeTLValue>,
    binding<&VtqAdaptor::gaugeTLValueDualNotify, &Screen::onGaugeTLValueDual>,
    binding<&VtqAdaptor::gaugeTRValueNotify, &Screen::onGaugeTRValue>,
    binding<&VtqAdaptor::gaugeTRValueDualNotify, &Screen::onGaugeTRValueDual>,
    binding<&VtqAdaptor::gaugeBLValueNotify, &Screen::onGaugeBLValue>,
    binding<&VtqAdaptor::gaugeBLValueDualNotify, &Screen::onGaugeBLValueDual>,
    binding<&VtqAdaptor::gaugeBRValueNotify, &Screen::onGaugeBRValue>,
    binding<&VtqAdaptor::gaugeBRValueDualNotify, &Screen::onGaugeBRValueDual>,
    binding<&VtqAdaptor::peakIndicatorNotify, &Screen::onPeakIndicator>,
    binding<&VtqAdaptor::peakIndicatorTextNotify, &Screen::onPeakIndicatorText>,
    binding<&VtqAdaptor::gauTopBarTextNotify, &Screen::onTopBarText>,
    binding<&VtqAdaptor::gaugeGraphicalSettingNotify, &Screen::onGaugeGraphicalSetting>,
    binding<&VtqAdaptor::shifterArrowIndicatorNotify, &Screen::onShifterArrowIndicator>,
    binding<&VtqAdaptor::centerGaugePeakColorNotify, &Screen::ondCenterGaugePeakColor>,
    binding<&VtqAdaptor::gauCustomControlLabelsNotify, &Screen::onCustomControlLabels>,
    binding<&VtqAdaptor::listInfoNotify, &Screen::onListInfo>,
    binding<&VtqAdaptor::activePresetStatusNotify, &Screen::onActivePresetStatus>,
    binding<&VtqAdaptor::centerGaugeRedLinePositionNotify, &Screen::onCenterGaugeRedLinePosition>,
    binding<&VtqAdaptor::guiDisplayTypeNotify, &Screen::onGuiDisplayTypeChanged>,
};
static constexpr AdaptorBinding lastReceiver =
    binding<&VtqAdaptor::centerGaugeValueNotify, &Screen::onmNordacenterGaugeValue>;

using MenuCommand = void (VtqAdaptor::*)(unsigned char action);
static constexpr MenuCommand menuCommands[gaugeCount] = {
    &VtqAdaptor::centerGaugeMenu, &VtqAdaptor::gaugeTLMenu, &VtqAdaptor::gaugeTRMenu,
    &VtqAdaptor::gaugeBLMenu,     &VtqAdaptor::gaugeBRMenu,
};

Vantiq_Gaugue_Widget::Vantiq_Gaugue_Widget(QWidget *parent)
    : DataScreen(BarPage::Gauges, commands, {steps, &lastReceiver}, parent)
    , m_form(std::make_unique<Ui_norda_gauge>())
{
    m_form->setupUi(this);
    setUpLabels();
    m_settingsExe = new mem::SettingsExe(this);
    init();

    // These two are never dropped.
    receive(&VtqAdaptor::Properties2TextInfo, &Screen::onProperties_2Status);
    connectLastReceiver();
}

Vantiq_Gaugue_Widget::~Vantiq_Gaugue_Widget() = default;

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

    // Touches go through the texts to the gauges beneath.
    const QWidgetList overlays = {m_form->up_left_widget,   m_form->up_right_widget,
                                  m_form->down_left_widget, m_form->down_right_widget,
                                  m_form->scale_widget,     m_form->Indicator_lb_2,
                                  m_form->Txt_ready};
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

    scrollLongTexts({m_form->Txt_fork});
    m_form->key_P1->setCaption(m_form->Txt_P1);
    m_form->key_P2->setCaption(m_form->Txt_P2);
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
            m_values[size_t(index)].label()->clear();
        m_titles[index]->setText(QString::fromLatin1(gaugeRow(index).title));
    }

    for (int number = 10; number <= 100; number += 10)
        m_defaultScale.append(QString::number(number));
    onCenterGaugeScale(QStringLiteral("0"), m_defaultScale);
}

void Vantiq_Gaugue_Widget::connectVtqAdaptor()
{
    DataScreen::connectVtqAdaptor();
    send(commands.requestInfo);
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
    if (m_form->Txt_ready->styleSheet() == sheet)
        return;
    m_form->Txt_ready->setStyleSheet(sheet);
    if (sheet.isEmpty()) // a removed sheet leaves the application's colours, not the form's
        m_form->Txt_ready->setPalette(QPalette());
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
    const TouchAction action = pressed ? TouchAction::Pressed : TouchAction::Released;
    if (id >= 0 && id < gaugeCount)
        send(menuCommands[id], static_cast<unsigned char>(action));
}

} // namespace norda
