#pragma once

#include "screenwindow.h"

namespace norda {

/** Window 80: the gauges. */
class GaugesWindow : public ScreenWindow
{
    Q_OBJECT
public:
    explicit GaugesWindow(QObject *parent);
    ~GaugesWindow() override;

private:
    QWidget *createScreen() override;

    static const Shell shell;
};

} // namespace norda
