#pragma once

#include <QWidget>

#include <memory>

class Ui_norda_vantiq_settings;

namespace norda {

class Vantiq_Bar_Widget;

/** The screen of the vehicle module's configuration menu. It leaves the host's status bar alone. */
class Vantiq_Settings_Widget : public QWidget
{
    Q_OBJECT
public:
    explicit Vantiq_Settings_Widget(QWidget *parent = nullptr);
    ~Vantiq_Settings_Widget() override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    const std::unique_ptr<Ui_norda_vantiq_settings> m_form;
    Vantiq_Bar_Widget *m_bar;
};

} // namespace norda
