#include "settingwindow.h"

#include "norda/widget/vantiq_settings_widget.h"

namespace norda {

const ScreenWindow::Shell SettingWindow::shell = {"DSPLState_NORDA_Setting", 84, false, FullScreen,
                                                  true};

SettingWindow::SettingWindow(int id, QObject *parent)
    : ScreenWindow(shell, parent){Q_UNUSED(id)}

    SettingWindow::~SettingWindow() = default;

QWidget *SettingWindow::createScreen()
{
    return new Vantiq_Settings_Widget;
}

} // namespace norda
