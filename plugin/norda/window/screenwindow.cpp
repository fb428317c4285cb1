#include "screenwindow.h"

#include "cm/statusbarcontrol.h"
#include "debug.h"
#include "keyevent.h"
#include "norda/widget/datascreen.h"

#include <QCoreApplication>

namespace norda {

/**
 * Set once the process ends. The platform's part of every window goes before the host's loader
 * destroys the root, so pages have to be left to the process then.
 */
static bool processEnds = false;

struct EndOfProcess
{
    ~EndOfProcess() { processEnds = true; }
};
static EndOfProcess endOfProcess;

ScreenWindow::ScreenWindow(const Shell &shell, QObject *parent)
    : cm::BaseWindow(parent), m_shell(shell)
{
    setWindowAttribute(4, QVariant(false), true);
}

// A head unit may unload the library with a page open, which would be without its code then.
ScreenWindow::~ScreenWindow()
{
    if (!processEnds && QCoreApplication::instance())
        delete m_screen;
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
