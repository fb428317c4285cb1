#pragma once

#include <QWidget>

#include <memory>

class QButtonGroup;
class Ui_Nordalink_bar;

namespace mem {
class SettingsExe;
}

namespace norda {

/** The navigation bar that every screen carries: six exclusive page keys. */
class Vantiq_Bar_Widget : public QWidget
{
    Q_OBJECT
public:
    explicit Vantiq_Bar_Widget(QWidget *parent = nullptr);
    ~Vantiq_Bar_Widget() override;

    void init();
    /** Marks one page and no other; a page that the bar does not have unmarks all. */
    void updateBtnChecked(int page);
    void soundClickedBeep();
    void update_barbtn_status(bool, bool, bool, bool);
    void resumeItemChecked();

public slots:
    void onPageButGroupClicked(int id);
    void onVantiqDsplChange(int display);

signals:
    // Declared for hosts that connect them; the bar itself navigates by posted events.
    void gotoGauges();
    void gotoVehicle();
    void gotoClimate();
    void gotoParking();

protected:
    void showEvent(QShowEvent *event) override;

private:
    const std::unique_ptr<Ui_Nordalink_bar> m_form;
    mem::SettingsExe *m_settingsExe;
    QButtonGroup *m_pages = nullptr;
};

} // namespace norda
