#include "settingwindow.h"

#include "norda/widget/vantiq_settings_widget.h"

namespace norda {

const ScreenWindow::Shell SettingWindow::shell = {"DSPLState_NORDA_Setting", WindowId::Settings,
                                                  false, FullScreen, true};

SettingWindow::SettingWindow(int, QObject *parent) : ScreenWindow(shell, parent) {}

SettingWindow::~SettingWindow() = default;

QWidget *SettingWindow::createScreen()
{
    return new Vantiq_Settings_Widget;
}

} // namespace norda
