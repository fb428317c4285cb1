#include "parkingassistwindow.h"

#include "norda/widget/vantiq_parking_widget.h"

namespace norda {

const ScreenWindow::Shell ParkingWindow::shell = {"", 83, true, FullScreen, false};

ParkingWindow::ParkingWindow(int id, QObject *parent)
    : ScreenWindow(shell, parent){Q_UNUSED(id)}

    ParkingWindow::~ParkingWindow() = default;

QWidget *ParkingWindow::createScreen()
{
    return new Vantiq_Parking_Widget;
}

} // namespace norda
