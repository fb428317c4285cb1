#include "Aboutwindow.h"

#include "norda/widget/norda_about_widget.h"

namespace norda {

const ScreenWindow::Shell AboutWindow::shell = {"Aboutwindow", 85, false, FullScreen, true};

AboutWindow::AboutWindow(int id, QObject *parent)
    : ScreenWindow(shell, parent){Q_UNUSED(id)}

    AboutWindow::~AboutWindow() = default;

QWidget *AboutWindow::createScreen()
{
    return new Norda_About_Widget;
}

} // namespace norda
