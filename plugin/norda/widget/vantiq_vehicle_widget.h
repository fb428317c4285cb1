#pragma once

#include "datascreen.h"
#include "imagestore.h"

#include <QList>
#include <QMap>

#include <array>
#include <memory>

class QLabel;
class Ui_norda_vehicles;

namespace mem {
class SettingsExe;
}

namespace norda {

/**
 * The vehicle information screen: the car from above with what is open, the pressure and the
 * temperature of each tire, the battery, the check-engine indicator and the module's texts. It
 * stays bound to the adaptor for life, so it is up to date before it is shown.
 */
class Vantiq_Vehicle_Widget : public DataScreen
{
    Q_OBJECT
public:
    explicit Vantiq_Vehicle_Widget(QWidget *parent = nullptr);
    ~Vantiq_Vehicle_Widget() override;

public slots:
    void onPopup(const QString &title, const QStringList &texts, const QStringList &values,
                 const QByteArray &bytes) override;
    void onPopupKeyClicked(int key) override;
    void onListCustomItemClicked(int item) override;
    void onShowListview() override;
    void onVehCustomeCtrlLabels(const QStringList &captions, const QByteArray &states);
    void onVehListInfo(const QString &title, const QByteArray &types, const QStringList &rows,
                       const QList<QVariant> &values, const QByteArray &states);
    void onVehGuiDisplayType(unsigned char type);

    /** Shows each overlay whose bit is set. */
    void onDoorStatus(unsigned char status);
    /** Shows the one overlay of a code, for hosts that report doors one at a time. */
    void onNordaDoorStatus(unsigned char code);
    void onBatteryVoltage(const QString &text);
    void onCompassHeading(const QString &text);
    void onSeatbeltStatus(unsigned char status);
    void onCheckEngineStatus(unsigned char status);
    void onCheckGearPositionStatus(unsigned char position);
    void onCheckEngineClicked();
    void onVehicleInfoText(const QString &line1, const QString &line2);
    void onVehTopBarText(const QString &text);
    /** Doors, battery and tire temperatures as one list of integers. */
    void onProperties2TextInfo(QList<int> properties);

    void onTirePressureStatus(unsigned char flags, unsigned char aux, const QStringList &values);
    void onNordaTirePressureStatus(unsigned char flags, unsigned char aux,
                                   const QStringList &values);
    void onTireTemperatureStatus(unsigned char flags, unsigned char aux, const QStringList &values);
    /** The second reading of the pressures: its order is what stays on screen. */
    void updateNordaTirePressureStatus(unsigned char flags, unsigned char aux,
                                       const QStringList &values);

private:
    enum Tire { FrontLeft, FrontRight, RearLeft, RearRight, TireCount };
    enum TireLook { NormalTire, WarningTire };
    struct TireBox
    {
        QLabel *icon;
        QLabel *pressure;
        QLabel *temperature;
    };
    using TireText = QLabel *TireBox::*;

    void init();
    void initUI();
    void InitNordaUI();
    void setInfoTextShown(bool shown);

    void updateTirePressureStatus(unsigned char flags, unsigned char aux,
                                  const QStringList &values);
    void updateTireTemperatureStatus(unsigned char flags, unsigned char aux,
                                     const QStringList &values);
    void updateNordaTireTemperatureStatus(QLabel *icon, QLabel *text, int value);
    void showTireTexts(TireText text, unsigned char flags, const QStringList &values);
    void showTireIcon(QLabel *icon, TireLook look);

    const std::unique_ptr<Ui_norda_vehicles> m_form;
    mem::SettingsExe *m_settingsExe;
    bool m_infoTextShown = false;
    QString m_topBarText;
    QMap<int, QLabel *> m_doorLabels; // by door code
    QList<QLabel *> m_doorBits;       // by bit of the door status
    std::array<TireBox, TireCount> m_tires;
    ImageStore m_images;
};

} // namespace norda
