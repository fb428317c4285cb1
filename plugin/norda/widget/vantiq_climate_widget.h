#pragma once

#include "datascreen.h"
#include "imagestore.h"
#include "norda/climate/climatedrag.h"
#include "norda/climate/climatemodel.h"

#include <QEvent>
#include <QMap>

#include <memory>

class QAbstractButton;
class QButtonGroup;
class QLabel;
class QPushButton;
class Ui_norda_vantiq_climate;

namespace norda {

/**
 * The climate screen: the auto/dual layout of the front zone and the manual layout of the second
 * one, drawn from the module's status list. Every touch of a key goes out as the map of command
 * bytes; the temperature bar and the fan meters send direct values when they are dragged.
 *
 * The slots of the per-item path and the handlers that send single commands are not wired by the
 * screen: they are offered to hosts that connect them.
 */
class Vantiq_Climate_Widget : public DataScreen
{
    Q_OBJECT
public:
    explicit Vantiq_Climate_Widget(QWidget *parent = nullptr);
    ~Vantiq_Climate_Widget() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

    void init_UI();
    void InitNordaUi();
    void InitByte();
    void UpdateNordaUI();

public slots:
    void onEnter() override;
    /** The host comes back from a view that covered the screen. */
    void resume();
    void onSettingsClicked() override;

    // Only a trace: the data comes with the status list.
    void connectVtqAdaptor() override;
    void disconnectVtqAdaptor() override;
    void secondconnectVtqAdaptor();
    void seconddisconnectVtqAdaptor();
    void onClimateType();
    void onSecondClimateType();

    // The status list and the touches, as wired
    void onNordaNotifyClimateCtrlStatus(const QList<int> &status);
    void onNordaManualTextBtnClicked(int id);
    void onNordaManualIconBtnClicked(int id);
    void OonNordaAutoDualTextBtnClicked(int id);
    void OnNordaDualButtonClicked(int id);
    void onNordadRearPressed();
    void onNordaRearClicked(bool checked);
    void onTemperature();
    void onManualFan();
    void onAutoFan();

    // The per-item path, front zone
    void onManClimateTempNotify(int up, int down, int temperature);
    void onAutoClimateTempNotify(const QMap<int, QVariant> &temperatures);
    void onDefrosterStatusNotify(int front, int rear);
    void onHeatedCooledSeatsStatusNotify(int leftHeated, int rightHeated, int leftCooled,
                                         int rightCooled);
    void onVentStatusNotify(int position, int mode, int speed);
    void onVentStatusPassengerNotify(int position, int, int);
    void onClimateCtrlStatusNotify(int, int, int, int, int, int, int, int);
    void onRearZoneButtonStatusNotify(int state);
    void onCliTopBarTextNotify(const QString &text);
    void onHeatedSteeringWheelNotify(int state);
    void onCustomControlLabels(const QStringList &captions, const QByteArray &states);
    void onListInfo(const QString &title, const QByteArray &types, const QStringList &rows,
                    const QList<QVariant> &values, const QByteArray &states);
    void onGuiDisplayTypeChanged(unsigned char type);

    // The per-item path, second zone
    void onSecondManClimateTempNotify(int up, int down, int temperature);
    void onSecondAutoClimateTempNotify(const QMap<int, QVariant> &temperatures);
    void onSecondDefrosterStatusNotify(int front, int rear);
    void onSecondHeatedCooledSeatsStatusNotify(int leftHeated, int rightHeated, int leftCooled,
                                               int rightCooled);
    void onSecondVentStatusNotify(int position, int mode, int speed);
    void onSecondVentStatusPassengerNotify(int position, int, int);
    void onSecondClimateCtrlStatusNotify(int ac, int onOff, int recirc, int dual, int autoState,
                                         int maxAc, int fanUp, int fanDown);
    void onSecondRearZoneButtonStatusNotify(int state);
    void onSecondCliTopBarTextNotify(const QString &text);
    void onSecondHeatedSteeringWheelNotify(int state);
    void onSecondCustomControlLabels(const QStringList &captions, const QByteArray &states);
    void onSecondPopup(const QString &title, const QStringList &texts, const QStringList &values,
                       const QByteArray &bytes);
    void onSecondListInfo(const QString &title, const QByteArray &types, const QStringList &rows,
                          const QList<QVariant> &values, const QByteArray &states);
    void onSecondGuiDisplayTypeChanged(unsigned char type);
    void onSecondPopupKeyClicked(int key);
    void onSecondListBackClicked();
    void onSecondListUpClicked();
    void onSecondListDnClicked();
    void onSecondListItemClicked(int row);
    void onSecondListCustomItemPressed(int item);
    void onSecondListCustomItemClicked(int item);
    void onSecondListCustomItemReleased(int item);
    void onShowSecendListview();
    void createSecondPopup(bool show);
    void createSecondListview(bool show);

    // Single commands, for hosts that connect them
    void onManualIconBtnPressed(int id);
    void onManualIconBtnClicked(int id);
    void onManualIconBtnReleased(int id);
    void onManualTextBtnPressed(int id);
    void onManualTextBtnClicked(int id);
    void onManualTextBtnReleased(int id);
    void onAutoDualIconBtnPressed(int id);
    void onAutoDualIconBtnClicked(int id);
    void onAutoDualIconBtnReleased(int id);
    void onAutoDualTextBtnPressed(int id);
    void onAutoDualTextBtnClicked(int id);
    void onAutoDualTextBtnReleased(int id);
    void onRearPressed();
    void onRearClicked();
    void onRearReleased();
    void onCloseClicked();

    // Drawing
    void setTemperatureValue(int value);
    void setTemperaturePosition(int eventType, int x, bool released);
    void setManualFanmeterSpeeds(int speed);
    void setAutoDualFanmeterSpeeds(int speed);
    void setManualFanmeterPixmap(int x, bool pressed);
    void setAutoDualFanmeterPixmap(int x, bool pressed);
    void updateVentPositionIdentifier(int code);
    void updateVentSpeedIdentifier(int mode, int speed);
    void updateRecircFreshState(int state);
    void updateCurrMainUIType();
    void updateCurrSecondUIType();
    void updateRearZoneUi();
    void updateFrontZoneUi();

protected:
    ScreenCommands::ControlCommand customControl() const override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void connectKeyGroups();
    void letTouchesThrough();
    QButtonGroup *groupKeys(const QList<QAbstractButton *> &keys);

    bool isManual() const { return m_model.zones().layout() == Layout::Manual; }
    bool isSecondZone() const { return m_model.zones().active() == Zone::Second; }
    void showPage();
    void returnToLayout();
    bool bringUp(Zone zone);

    void touch(ClimateGroup group, int id);
    void sendBytes();
    template <typename... Parameters, typename... Arguments>
    void sendToZone(void (VtqAdaptor::*front)(Parameters...),
                    void (VtqAdaptor::*second)(Parameters...), Arguments... arguments)
    {
        send(isSecondZone() ? second : front, arguments...);
    }
    void pressSingle(ClimateGroup group, int id);
    void releaseSingle(ClimateGroup group, int id);
    void clickSingle(ClimateGroup group, int id);
    void dragTemperature(QEvent::Type step, int x);
    void dragManualFan(QEvent::Type step, int x);
    void dragAutoDualFan(QEvent::Type step, int x);

    void showAutoDual(const AutoDualStatus &status);
    void showSeat(bool left, int code);
    void showManual(const ManualStatus &status);
    void showManualSeat(int code, QLabel *heated, QLabel *cooled);
    void showFanLevel(QLabel *meter, int level);

    void updateIconButtonState(QPushButton *key, int state);
    void updateTextButtonState(QPushButton *key, int state);
    void updateCurrUITypeState(QPushButton *manual, QPushButton *autoDual, int state);
    void updateCurrUITypeState(QPushButton *autoDual, int state);
    void updateOnOffButtonState(int state);
    void updateAcButtonState(int state);
    void updateMaxAcButtonState(int state);
    void updateRecircFreshButtonState(int state);
    void updateFanSpeedUpButtonState(int state);
    void updateFanSpeedDownButtonState(int state);
    void updateHeatedWheelButtonState(int state);
    void updateFrontDefrosterButtonState(int state);
    void updateRearDefrosterButtonState(int state);
    void updateAutoButtonState(int state);
    void updateDualButtonState(int state);
    void updateHeatedButtonState(bool left, int level);
    void updateCooledButtonState(bool left, int level);
    void updateLHeatedSeatButtonState(int state);
    void updateRHeatedSeatButtonState(int state);
    void updateLCooledSeatButtonState(int state);
    void updateRCooledSeatButtonState(int state);
    void showIcon(QAbstractButton *key, const Level_Path *images);

    void showManualTemperature(int up, int down, int temperature);
    void showDefrosters(int front, int rear);
    void showSeats(int leftHeated, int rightHeated, int leftCooled, int rightCooled);
    void showVent(int position, int mode, int speed);
    void showRearZoneButton(int state);
    void showCustomControls(const QStringList &captions, const QByteArray &states);

    using Features = QMap<int, bool>;
    void updateBtnVisible(const Features &features, int feature, QWidget *widget);
    void updateBtnVisible(const Features &features, int feature, const QList<QWidget *> &manual,
                          const QList<QWidget *> &autoDual);
    void applyFeatures0(const Features &features);
    void applyFeatures1(const Features &features);
    void updateRearClimateData0();
    void updateRearClimateData1();
    void updateRearClimateData2();
    void updateFrontClimateData0();
    void updateFrontClimateData1();

    const std::unique_ptr<Ui_norda_vantiq_climate> m_form;
    ImageStore m_images;
    ClimateModel m_model;
    TemperatureDrag m_temperatureDrag;
    int m_rawManualFan = 0;
};

} // namespace norda
