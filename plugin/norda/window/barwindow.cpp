#include "barwindow.h"

#include "norda/widget/norda_bar_widget.h"

namespace norda {

const ScreenWindow::Shell BarWindow::shell = {"", NoScreen, false, FullScreen, false};

BarWindow::BarWindow(int id, QObject *parent)
    : ScreenWindow(shell, parent){Q_UNUSED(id)}

    BarWindow::~BarWindow() = default;

QWidget *BarWindow::createScreen()
{
    return new Vantiq_Bar_Widget;
}

} // namespace norda
