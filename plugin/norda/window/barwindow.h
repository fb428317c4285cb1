#pragma once

#include "plugin_global.h"
#include "screenwindow.h"

namespace norda {

/** The navigation bar as a window; no id serves it and nothing installs its widget. */
class NORDA_PLUGIN_EXPORT BarWindow : public ScreenWindow
{
    Q_OBJECT
public:
    BarWindow(int id, QObject *parent);
    ~BarWindow() override;

private:
    QWidget *createScreen() override;

    static const Shell shell;
};

} // namespace norda
