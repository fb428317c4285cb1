#pragma once

#include "screenwindow.h"

namespace norda {

/** Window 81: vehicle information. */
class VehicleWindow : public ScreenWindow
{
    Q_OBJECT
public:
    VehicleWindow(int id, QObject *parent);
    ~VehicleWindow() override;

private:
    QWidget *createScreen() override;

    static const Shell shell;
};

} // namespace norda
