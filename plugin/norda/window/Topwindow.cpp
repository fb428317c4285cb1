#include "Topwindow.h"

#include "norda/widget/vantiq_top_bar_widget.h"

namespace norda {

const ScreenWindow::Shell TopWindow::shell = {"", WindowId::None, false, FullScreen, false};

TopWindow::TopWindow(int, QObject *parent) : ScreenWindow(shell, parent) {}

TopWindow::~TopWindow() = default;

QWidget *TopWindow::createScreen()
{
    return new Vantiq_Top_Bar_Widget;
}

} // namespace norda
