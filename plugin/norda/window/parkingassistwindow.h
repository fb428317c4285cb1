#pragma once

#include "screenwindow.h"

namespace norda {

/** Window 83: parking assist. */
class ParkingWindow : public ScreenWindow
{
    Q_OBJECT
public:
    ParkingWindow(int id, QObject *parent);
    ~ParkingWindow() override;

private:
    QWidget *createScreen() override;

    static const Shell shell;
};

} // namespace norda
