#include "vehicleinfowindow.h"

#include "norda/widget/vantiq_vehicle_widget.h"

namespace norda {

const ScreenWindow::Shell VehicleWindow::shell = {"", WindowId::Vehicle, false, FullScreen, false};

VehicleWindow::VehicleWindow(int, QObject *parent) : ScreenWindow(shell, parent) {}

VehicleWindow::~VehicleWindow() = default;

QWidget *VehicleWindow::createScreen()
{
    return new Vantiq_Vehicle_Widget;
}

} // namespace norda
