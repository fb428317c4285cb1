#include "vehicleinfowindow.h"

#include "norda/widget/vantiq_vehicle_widget.h"

namespace norda {

const ScreenWindow::Shell VehicleWindow::shell = {"", 81, false, FullScreen, false};

VehicleWindow::VehicleWindow(int id, QObject *parent)
    : ScreenWindow(shell, parent){Q_UNUSED(id)}

    VehicleWindow::~VehicleWindow() = default;

QWidget *VehicleWindow::createScreen()
{
    return new Vantiq_Vehicle_Widget;
}

} // namespace norda
