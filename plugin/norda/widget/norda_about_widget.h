#pragma once

#include "barscreen.h"

#include <memory>

class Ui_norda_about;

namespace norda {

/** The screen of versions and time. It leaves the host's status bar alone. */
class Norda_About_Widget : public BarScreen
{
    Q_OBJECT
public:
    explicit Norda_About_Widget(QWidget *parent = nullptr);
    ~Norda_About_Widget() override;

private:
    void onNordaVerInfo(const QStringList &version);
    void onTimeInfo(const QStringList &digits);
    void showAudioFirmware();

    const std::unique_ptr<Ui_norda_about> m_form;
};

} // namespace norda
