#pragma once

#include "datascreen.h"

#include <memory>

class Ui_norda_vehicles;

namespace mem {
class SettingsExe;
}

namespace norda {

/** The vehicle information screen. */
class Vantiq_Vehicle_Widget : public DataScreen
{
    Q_OBJECT
public:
    explicit Vantiq_Vehicle_Widget(QWidget *parent = nullptr);
    ~Vantiq_Vehicle_Widget() override;

public slots:
    void connectVtqAdaptor();
    void disconnectVtqAdaptor();

    void onPopup(const QString &title, const QStringList &texts, const QStringList &values,
                 const QByteArray &bytes) override;
    void onPopupKeyClicked(int key) override;
    void onListCustomItemClicked(int item) override;
    void onShowListview() override;
    void onVehCustomeCtrlLabels(const QStringList &captions, const QByteArray &states);
    void onVehListInfo(const QString &title, const QByteArray &types, const QStringList &rows,
                       const QList<QVariant> &values, const QByteArray &states);
    void onVehGuiDisplayType(unsigned char type);

private:
    template <typename Operation>
    void forEachConnection(Operation operation);

    const std::unique_ptr<Ui_norda_vehicles> m_form;
    mem::SettingsExe *m_settingsExe;
};

} // namespace norda
