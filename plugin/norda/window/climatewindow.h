#pragma once

#include "screenwindow.h"

namespace norda {

/** Window 82: climate control. */
class ClimateWindow : public ScreenWindow
{
    Q_OBJECT
public:
    explicit ClimateWindow(QObject *parent);
    ~ClimateWindow() override;

private:
    QWidget *createScreen() override;

    static const Shell shell;
};

} // namespace norda
