#pragma once

#include "datascreen.h"

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
 * The parking assist screen. It does not bind itself to the adaptor: the host invokes
 * `connectVtqAdaptor()` when the car has the sensors.
 */
class Vantiq_Parking_Widget : public DataScreen
{
    Q_OBJECT
public:
    explicit Vantiq_Parking_Widget(QWidget *parent = nullptr);
    ~Vantiq_Parking_Widget() override;

    void updateCustomControlLabels(const QStringList &captions, const QByteArray &states);

public slots:
    void connectVtqAdaptor();
    void disconnectVtqAdaptor();

    void onPButtonPressed(int id);
    void onPButtonClicked(int id);
    void onPButtonReleased(int id);
    void onCustomControlLabels(const QStringList &captions, const QByteArray &states);
    void onListInfo(const QString &title, const QByteArray &types, const QStringList &rows,
                    const QList<QVariant> &values, const QByteArray &states);
    void onGuiDisplayTypeChanged(unsigned char type);

private:
    template <typename Operation>
    void forEachConnection(Operation operation);

    const std::unique_ptr<Ui_norda_parking> m_form;
    QList<QLabel *> m_customLabels;
    QButtonGroup *m_customKeys;
    mem::SettingsExe *m_settingsExe;
};

} // namespace norda
