#pragma once

#include "datascreen.h"
#include "fontfit.h"
#include "imagestore.h"
#include "labeltext.h"

#include <QList>
#include <QRect>
#include <QVector>

#include <array>
#include <memory>

class QButtonGroup;
class QLabel;
class Ui_norda_gauge;

namespace mem {
class SettingsExe;
}

namespace norda {

class SQuilloGauge;

/** The gauges screen: engine speed in the centre, four further values in the corners. */
class Vantiq_Gaugue_Widget : public DataScreen
{
    Q_OBJECT
public:
    /** One gauge as the screen configured it; records stand in gauge-index order. */
    struct SGauge
    {
        SQuilloGauge *gauge = nullptr;
        QRect geometry;
        QString backgroundImage;
        QString needleImage;
        QString zeroImage;
        bool autoFill = true;
        bool needle = true;
        int rotationStart = 0;
        int rotationEnd = 0;
        int pointerX = 0;
        int pointerY = 0;
    };

    explicit Vantiq_Gaugue_Widget(QWidget *parent = nullptr);
    ~Vantiq_Gaugue_Widget() override;

    void init();
    void initUI();
    void initGaugesDbd();
    void InitNordaUi();
    void updateGaugesDbd();
    void updateSQuilloBgImg(int index, const QString &image);
    /** Places the scale numbers for the centre gauge's style. For the host to invoke. */
    Q_INVOKABLE
    void updateScale();
    void autoLabelFontSize(QLabel *label, const QString &text);
    void updateCustomKeyStateText(const QStringList &captions, const QByteArray &states);

public slots:
    /** Asks the module for everything, too. */
    void connectVtqAdaptor() override;

    void onGaugeTitles(const QStringList &titles);
    void onCenterGaugeValue(const QString &value, const QString &unit, unsigned char position);
    void onmNordacenterGaugeValue(const QString &value, const QString &unit,
                                  unsigned char position);
    void onGaugeTLValue(const QString &value, unsigned char position);
    void onGaugeTRValue(const QString &value, unsigned char position);
    void onGaugeBLValue(const QString &value, unsigned char position);
    void onGaugeBRValue(const QString &value, unsigned char position);
    void onGaugeTLValueDual(const QString &value, const QString &unit, unsigned char position);
    void onGaugeTRValueDual(const QString &value, const QString &unit, unsigned char position);
    void onGaugeBLValueDual(const QString &value, const QString &unit, unsigned char position);
    void onGaugeBRValueDual(const QString &value, const QString &unit, unsigned char position);
    void onProperties_2Status(const QList<int> &properties);
    void onCenterGaugeScale(const QString &first, const QStringList &rest);
    void onGaugeGraphicalSetting(const QByteArray &styles, const QByteArray &zeroPositions);
    void onPeakIndicator(unsigned char shown);
    void onPeakIndicatorText(const QString &text);
    void ondCenterGaugePeakColor(unsigned char code);
    void onShifterArrowIndicator(unsigned char on);
    void onTopBarText(const QString &text);
    void onActivePresetStatus(unsigned char preset);
    void onCenterGaugeRedLinePosition(unsigned char position);
    void onCustomControlLabels(const QStringList &captions, const QByteArray &states);
    void onListInfo(const QString &title, const QByteArray &types, const QStringList &rows,
                    const QList<QVariant> &values, const QByteArray &states);
    void onGuiDisplayTypeChanged(unsigned char type);
    void onGaugeTouch(bool pressed, int id);

private:
    template <typename... Parts>
    void showCorner(int index, int position, const Parts &...text);
    void showProperty(int index, int value, int maximum, const QString &unit);

    const std::unique_ptr<Ui_norda_gauge> m_form;
    mem::SettingsExe *m_settingsExe;
    ImageStore m_images;
    QList<SGauge> m_gauges;
    QButtonGroup *m_presetKeys = nullptr;
    QList<QLabel *> m_presetTexts;
    std::array<LabelText, 5> m_values;
    FontFit m_fontFit;
    QList<QLabel *> m_titles;
    QVector<QLabel *> m_scaleLabels;
    std::array<unsigned char, 5> m_styles{};
    QStringList m_defaultScale;
};

} // namespace norda
