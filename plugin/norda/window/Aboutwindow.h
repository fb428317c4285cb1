#pragma once

#include "screenwindow.h"

namespace norda {

/** Window 85: versions and time. */
class AboutWindow : public ScreenWindow
{
    Q_OBJECT
public:
    AboutWindow(int id, QObject *parent);
    ~AboutWindow() override;

private:
    QWidget *createScreen() override;

    static const Shell shell;
};

} // namespace norda
