#pragma once

#include "plugin_global.h"
#include "screenwindow.h"

namespace norda {

/** The top bar as a window; no id serves it and nothing installs its widget. */
class NORDA_PLUGIN_EXPORT TopWindow : public ScreenWindow
{
    Q_OBJECT
public:
    TopWindow(int id, QObject *parent);
    ~TopWindow() override;

private:
    QWidget *createScreen() override;

    static const Shell shell;
};

} // namespace norda
