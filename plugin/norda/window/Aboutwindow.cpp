#include "Aboutwindow.h"

#include "norda/widget/norda_about_widget.h"

namespace norda {

const ScreenWindow::Shell AboutWindow::shell = {"Aboutwindow", WindowId::About, false, FullScreen,
                                                true};

AboutWindow::AboutWindow(int, QObject *parent) : ScreenWindow(shell, parent) {}

AboutWindow::~AboutWindow() = default;

QWidget *AboutWindow::createScreen()
{
    return new Norda_About_Widget;
}

} // namespace norda
