#pragma once

#include "datascreen.h"
#include "imagestore.h"
#include "norda/parking/parkingzones.h"

#include <QList>

#include <memory>

class QButtonGroup;
class QLabel;
class Ui_norda_parking;

namespace mem {
class SettingsExe;
}

namespace norda {

/**
 * The parking assist screen: eight sensor zones around the car, the blind-spot text, and the keys
 * of the rear camera and of the split view.
 *
 * By itself it hears the module's zone messages only. The rest it is bound to by the host, which
 * invokes `connectVtqAdaptor()` when the car has the sensors, and `resume()` whenever the camera
 * or another view has covered the screen.
 */
class Vantiq_Parking_Widget : public DataScreen
{
    Q_OBJECT
public:
    explicit Vantiq_Parking_Widget(QWidget *parent = nullptr);
    ~Vantiq_Parking_Widget() override;

    void updateCustomControlLabels(const QStringList &captions, const QByteArray &states);

public slots:
    /** Drops the zone messages, too, which a later connect does not bring back. */
    void disconnectVtqAdaptor() override;

    void onPButtonPressed(int id);
    void onPButtonClicked(int id);
    void onPButtonReleased(int id);
    void onCustomControlLabels(const QStringList &captions, const QByteArray &states);
    void onListInfo(const QString &title, const QByteArray &types, const QStringList &rows,
                    const QList<QVariant> &values, const QByteArray &states);
    void onGuiDisplayTypeChanged(unsigned char type);

    void onEnter() override;
    void resume();
    void onSettingsClicked() override;
    void onNodraSettingsClicked();
    void onSplitClicked();
    void onCameraClicked();

    void onParkingTopBarText(const QString &text);
    void onParkingDistanceFront(const QByteArray &distances);
    /** The rear zones' raw distances, for hosts whose module sends them so. */
    void onParkingDistanceRear(const QByteArray &distances);
    void onParkingDistanceLeft(const QByteArray &distances);
    void onParkingDistanceRight(const QByteArray &distances);
    /** A zone or a blind spot and its level. */
    void onNordaParkingData(const QByteArray &message);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void init();
    void init_UI();
    void init_Zone();
    void showDistances(ParkingZone firstZone, const QByteArray &distances);
    void showZone(ParkingZone nearest, int level);

    const std::unique_ptr<Ui_norda_parking> m_form;
    QList<QLabel *> m_customLabels;
    QButtonGroup *m_customKeys = nullptr;
    mem::SettingsExe *m_settingsExe;
    QLabel *m_blindStopLabel = nullptr;
    std::array<QLabel *, ParkingZoneCount> m_zoneLabels;
    ImageStore m_images;
};

} // namespace norda
