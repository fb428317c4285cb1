#include "barwindow.h"

#include "norda/widget/norda_bar_widget.h"

namespace norda {

const ScreenWindow::Shell BarWindow::shell = {"", WindowId::None, false, FullScreen, false};

BarWindow::BarWindow(int, QObject *parent) : ScreenWindow(shell, parent) {}

BarWindow::~BarWindow() = default;

QWidget *BarWindow::createScreen()
{
    return new Vantiq_Bar_Widget;
}

} // namespace norda
