#include "climatewindow.h"

#include "norda/widget/vantiq_climate_widget.h"

namespace norda {

// The host knows this window by the name of the page it replaced.
const ScreenWindow::Shell ClimateWindow::shell = {"canbus_climate", WindowId::Climate, false,
                                                  OwnBar, false};

ClimateWindow::ClimateWindow(QObject *parent) : ScreenWindow(shell, parent) {}

ClimateWindow::~ClimateWindow() = default;

QWidget *ClimateWindow::createScreen()
{
    return new Vantiq_Climate_Widget;
}

} // namespace norda
