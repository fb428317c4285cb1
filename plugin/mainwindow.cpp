#include "mainwindow.h"

#include "debug.h"
#include "keyevent.h"

namespace norda {

MainWindow::MainWindow(QObject *parent) : cm::BaseWindow(parent)
{
    setWindowAttribute(4, QVariant(false), true);
}

MainWindow::~MainWindow() = default;

QString MainWindow::name()
{
    return QStringLiteral("norda");
}

void MainWindow::onCreate() {}

void MainWindow::onDestroy()
{
    deleteDelay();
}

void MainWindow::onShow(const QByteArray &argument)
{
    NORDA_TRACE;
    cm::BaseWindow::onShow(argument);
}

int MainWindow::backEvent()
{
    return 1;
}

int MainWindow::keyEvent(KeyEvent *event)
{
    NORDA_TRACE << event->key() << int(event->type());
    return cm::BaseWindow::keyEvent(event);
}

void MainWindow::onDestroyObj()
{
    m_widget = nullptr;
}

} // namespace norda
