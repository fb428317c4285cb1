#include "gaugeswindow.h"

#include "norda/widget/vantiq_gague_widget.h"

namespace norda {

const ScreenWindow::Shell GaugesWindow::shell = {"norda_gauges", WindowId::Gauges, true, OwnBar,
                                                 false};

GaugesWindow::GaugesWindow(QObject *parent) : ScreenWindow(shell, parent) {}

GaugesWindow::~GaugesWindow() = default;

QWidget *GaugesWindow::createScreen()
{
    return new Vantiq_Gaugue_Widget;
}

} // namespace norda
