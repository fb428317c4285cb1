#include "parkingassistwindow.h"

#include "norda/widget/vantiq_parking_widget.h"

namespace norda {

const ScreenWindow::Shell ParkingWindow::shell = {"", WindowId::Parking, true, FullScreen, false};

ParkingWindow::ParkingWindow(int, QObject *parent) : ScreenWindow(shell, parent) {}

ParkingWindow::~ParkingWindow() = default;

QWidget *ParkingWindow::createScreen()
{
    return new Vantiq_Parking_Widget;
}

} // namespace norda
