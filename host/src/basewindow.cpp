#include "cm/basewindow.h"

#include "calllog.h"
#include "keyevent.h"

#include <QCoreApplication>

namespace cm {

/**
 * Set once the process ends. The platform's part of every window goes before a loader deletes the
 * plugins' roots, so content has to be left to the process then.
 */
static bool processEnds = false;

struct EndOfProcess
{
    ~EndOfProcess() { processEnds = true; }
};
static EndOfProcess endOfProcess;

BaseWindow::BaseWindow(QObject *parent) : QObject(parent) {}

// A head unit may unload a plugin with a page open, which would be without its code then.
BaseWindow::~BaseWindow()
{
    if (!processEnds && QCoreApplication::instance())
        delete m_mainWidget;
}

QString BaseWindow::name()
{
    return QString();
}

void BaseWindow::onCreate()
{
    CallLog::report("cm::BaseWindow::onCreate");
}

void BaseWindow::onDestroy()
{
    CallLog::report("cm::BaseWindow::onDestroy");
    deleteDelay();
}

void BaseWindow::onShow(const QByteArray &argument)
{
    CallLog::report("cm::BaseWindow::onShow", argument);
    if (m_mainWidget)
        m_mainWidget->show();
}

void BaseWindow::onHide(const QByteArray &argument)
{
    CallLog::report("cm::BaseWindow::onHide", argument);
    if (m_mainWidget)
        m_mainWidget->hide();
}

void BaseWindow::onEnter()
{
    CallLog::report("cm::BaseWindow::onEnter");
}

void BaseWindow::onExit()
{
    CallLog::report("cm::BaseWindow::onExit");
}

void BaseWindow::onReleased() {}

QWidget *BaseWindow::mainWidget()
{
    return m_mainWidget;
}

int BaseWindow::attribute()
{
    CallLog::report("cm::BaseWindow::attribute");
    return m_baseAttribute;
}

void BaseWindow::setStatusBar(StatusBarInterface *statusBar)
{
    m_statusBar = statusBar;
}

void BaseWindow::setStatusBarAutoHide(bool on)
{
    if (m_statusBar)
        m_statusBar->setAutoHide(on);
}

void BaseWindow::setStatusBarVisible(bool on)
{
    if (m_statusBar)
        m_statusBar->setVisible(on);
}

void BaseWindow::setBackgroundVisible(int, bool) {}

void BaseWindow::setPopup(PopupInterface *popup)
{
    m_popup = popup;
}

void BaseWindow::popupBtnClicked(int, int) {}

void BaseWindow::popupClicked(int) {}

void BaseWindow::popupOutsideClicked(int popup)
{
    if (m_popup)
        m_popup->close(popup);
}

void BaseWindow::popupTimeout(int) {}

int BaseWindow::backEvent()
{
    return 1;
}

void BaseWindow::setTranslation(const QString &) {}

bool BaseWindow::dispatchEvent(QEvent *event)
{
    return m_mainWidget && QCoreApplication::sendEvent(m_mainWidget, event);
}

int BaseWindow::keyEvent(KeyEvent *event)
{
    CallLog::report("cm::BaseWindow::keyEvent", event->key());
    return 0;
}

void BaseWindow::setMainWidget(QWidget *widget, int id)
{
    CallLog::report("cm::BaseWindow::setMainWidget",
                    QString::fromLatin1(widget ? widget->metaObject()->className() : ""), id);
    m_mainWidget = widget;
    m_screenId = id;
}

void BaseWindow::deleteDelay()
{
    CallLog::report("cm::BaseWindow::deleteDelay");
    if (m_mainWidget)
        m_mainWidget->deleteLater();
}

void BaseWindow::setWindowAttribute(int key, const QVariant &value, bool apply)
{
    CallLog::report("cm::BaseWindow::setWindowAttribute", key, value, apply);
    m_attributes.insert(key, value);
}

} // namespace cm
