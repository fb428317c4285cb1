#include "Topwindow.h"

#include "norda/widget/vantiq_top_bar_widget.h"

namespace norda {

const ScreenWindow::Shell TopWindow::shell = {"", NoScreen, false, FullScreen, false};

TopWindow::TopWindow(int id, QObject *parent)
    : ScreenWindow(shell, parent){Q_UNUSED(id)}

    TopWindow::~TopWindow() = default;

QWidget *TopWindow::createScreen()
{
    return new Vantiq_Top_Bar_Widget;
}

} // namespace norda
