#include "screenwindow.h"

#include "cm/statusbarcontrol.h"
#include "debug.h"
#include "keyevent.h"
#include "norda/widget/datascreen.h"

namespace norda {

ScreenWindow::ScreenWindow(const Shell &shell, QObject *parent)
    : cm::BaseWindow(parent), m_shell(shell)
{
    setWindowAttribute(4, QVariant(false), true);
}

// The base class may still delete the page, and then there is nobody here to be told.
ScreenWindow::~ScreenWindow()
{
    if (m_screen)
        m_screen->disconnect(this);
}

QString ScreenWindow::name()
{
    return QString::fromLatin1(m_shell.name);
}

void ScreenWindow::onCreate()
{
    if (m_shell.marked)
        NORDA_TRACE;
    AutoPrint timer(Q_FUNC_INFO, __LINE__);
    cm::BaseWindow::onCreate();
    if (m_shell.marked)
        NORDA_TRACE;
    if (m_shell.showStatusBar)
        cm::StatusBarControl::instance()->sethide(false);
    if (m_screen)
        return;

    if (m_shell.marked)
        NORDA_TRACE;
    m_screen = createScreen();
    connect(m_screen, &QObject::destroyed, this, &ScreenWindow::onDestroyObj);
    if (m_shell.screenId != WindowId::None)
        setMainWidget(m_screen, int(m_shell.screenId));
}

void ScreenWindow::onDestroy()
{
    deleteDelay();
}

void ScreenWindow::onEnter()
{
    cm::BaseWindow::onEnter();
    if (auto *screen = qobject_cast<DataScreen *>(m_screen))
        screen->onEnter();
}

int ScreenWindow::backEvent()
{
    return 1;
}

int ScreenWindow::attribute()
{
    if (m_shell.attribute == OwnBar)
        return cm::BaseWindow::attribute() | OwnBar;
    return m_shell.attribute;
}

int ScreenWindow::keyEvent(KeyEvent *event)
{
    NORDA_TRACE << event->key() << int(event->type());
    return cm::BaseWindow::keyEvent(event);
}

void ScreenWindow::onDestroyObj()
{
    m_screen = nullptr;
}

} // namespace norda
