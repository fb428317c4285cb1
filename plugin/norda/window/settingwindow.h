#pragma once

#include "screenwindow.h"

namespace norda {

/** Window 84: the vehicle module's settings menu. */
class SettingWindow : public ScreenWindow
{
    Q_OBJECT
public:
    SettingWindow(int id, QObject *parent);
    ~SettingWindow() override;

private:
    QWidget *createScreen() override;

    static const Shell shell;
};

} // namespace norda
