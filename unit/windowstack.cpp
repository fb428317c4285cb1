#include "windowstack.h"

#include "appplugin.h"
#include "cameraview.h"
#include "cm/reverservideoinservice.h"
#include "eventhandler.h"
#include "keyevent.h"
#include "mem/settingsutil.h"
#include "norda/vtqadaptor.h"
#include "pages.h"
#include "pluginfile.h"

#include "screen.h"
#include "touchevent.h"
#include "translator.h"
#include "unitlanguage.h"
#include "unitsettings.h"
#include "windowinterface.h"

#include <QCoreApplication>

#include <QJsonObject>
#include <QWidget>

WindowStack::WindowStack(Screen *screen, QObject *parent) : QObject(parent), m_screen(screen)
{
    connect(EventHandler::instance(), &EventHandler::touched, this, &WindowStack::onTouched);
    connect(mem::SettingsUtil::instance(), &mem::SettingsUtil::VantiqSplit, screen,
            &Screen::setSplit);
    connect(cm::ReverserVideoInService::getInstance(), &cm::ReverserVideoInService::warningUpdated,
            screen->camera(), &CameraView::updateWarning);
    connect(Translator::instance(), &Translator::languageChanged, this, &WindowStack::passLanguage);
    unitsettings::stateCameraInput();
}

WindowStack::~WindowStack()
{
    if (!m_plugin)
        return;
    if (!m_stack.isEmpty())
        leave(currentWindow());
    for (int id : windowIds())
        window(id)->onDestroy();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_loader.unload();
}

QString WindowStack::wantedIid()
{
    return QStringLiteral("com.stavel.Qt.nordaPlugin");
}

bool WindowStack::load(const QString &file, QString *error)
{
    const QString wanted = wantedIid();
    const QString fault = faultOfPluginFile(file);
    if (!fault.isEmpty()) {
        *error = QStringLiteral("%1: %2").arg(file, fault);
        return false;
    }
    const QString iid = openPluginFile(&m_loader, file).value(QStringLiteral("IID")).toString();
    if (iid != wanted) {
        *error = QStringLiteral("%1: expected a plugin with the interface %2, found %3")
                     .arg(file, wanted, iid.isEmpty() ? QStringLiteral("no plugin") : iid);
        return false;
    }
    QObject *root = m_loader.instance();
    m_plugin = qobject_cast<AppPlugin *>(root);
    if (!m_plugin) {
        *error = QStringLiteral("%1: expected a root object with the interface AppPlugin, %2")
                     .arg(file, root ? QStringLiteral("found another") : m_loader.errorString());
        return false;
    }
    m_plugin->create();
    return true;
}

QList<int> WindowStack::windowIds() const
{
    return m_plugin->windowInterfaceID();
}

WindowInterface *WindowStack::window(int id) const
{
    return m_plugin->requestWindowInterface(id);
}

SourceInterface *WindowStack::source(int id) const
{
    return m_plugin ? m_plugin->requestSourceInterface(id) : nullptr;
}

QWidget *WindowStack::currentPage() const
{
    return m_stack.isEmpty() ? nullptr : window(currentWindow())->mainWidget();
}

void WindowStack::onTouched(int code)
{
    if (code == Qx::TouchCamera) {
        openCamera();
        return;
    }
    if (const Page *page = pageWith(&Page::code, Qx::Touch(code)))
        bringToFront(page->window);
}

void WindowStack::passLanguage()
{
    if (!m_plugin)
        return;
    for (const int id : windowIds())
        window(id)->setTranslation(UnitLanguage::locale().name());
}

void WindowStack::openCamera()
{
    m_screen->setSplit(unitsettings::prefersSplit());
    m_screen->showCamera(true);
}

void WindowStack::leave(int id)
{
    window(id)->onExit();
    window(id)->onHide(QByteArray());
}

void WindowStack::enter(int id)
{
    WindowInterface *opened = window(id);
    if (!opened->mainWidget())
        opened->onCreate();
    QWidget *page = opened->mainWidget();
    if (!page)
        return;
    m_screen->adopt(page);
    bindPage(page, id);
    opened->onShow(QByteArray());
    opened->onEnter();
    emit windowOpened(id);
}

/** The host connects the parking page to the sensors, once. */
void WindowStack::bindPage(QWidget *page, int id)
{
    if (id != ParkingPage || page == m_boundPage)
        return;
    m_boundPage = page;
    QMetaObject::invokeMethod(page, "connectVtqAdaptor");
}

/** A page of the module is empty until requested; after a touch the navigation bar does it. */
static void requestFromModule(int id)
{
    const Page *page = pageWith(&Page::window, id);
    if (page && page->moduleRequest)
        norda::VtqAdaptor::instance()->NordaData_Request(page->moduleRequest);
}

void WindowStack::openWindow(int id)
{
    if (!windowIds().contains(id))
        return;
    requestFromModule(id);
    bringToFront(id);
}

void WindowStack::bringToFront(int id)
{
    if (!windowIds().contains(id))
        return;
    const bool leavesCamera = m_screen->isCameraShown();
    m_screen->showCamera(false);
    if (id != currentWindow())
        changeTo(id);
    if (leavesCamera)
        emit cameraLeft();
}

void WindowStack::changeTo(int id)
{
    if (!m_stack.isEmpty())
        leave(currentWindow());
    m_stack.removeAll(id);
    m_stack.append(id);
    enter(id);
}

static void invokeIfThere(QObject *page, const char *slot)
{
    const QByteArray signature = QByteArray(slot) + "()";
    if (page && page->metaObject()->indexOfMethod(signature) >= 0)
        QMetaObject::invokeMethod(page, slot);
}

void WindowStack::toggleSplit()
{
    invokeIfThere(currentPage(), "onSplitClicked");
}

void WindowStack::closeCamera()
{
    if (!m_screen->isCameraShown())
        return;
    m_screen->showCamera(false);
    invokeIfThere(currentPage(), "resume");
}

void WindowStack::back()
{
    if (m_screen->isCameraShown()) {
        closeCamera();
        return;
    }
    if (m_stack.size() < 2 || window(currentWindow())->backEvent() == 0)
        return;
    leave(m_stack.takeLast());
    requestFromModule(currentWindow());
    enter(currentWindow());
}

bool WindowStack::pressKey(int key)
{
    if (m_stack.isEmpty())
        return false;
    KeyEvent press(QEvent::KeyPress, key);
    KeyEvent release(QEvent::KeyRelease, key);
    const bool used = window(currentWindow())->keyEvent(&press) != 0;
    window(currentWindow())->keyEvent(&release);
    return used;
}

void WindowStack::recreateWindow()
{
    if (!m_stack.isEmpty())
        rebuildWindow(currentWindow());
}

void WindowStack::rebuildWindow(int id)
{
    const bool isOpen = id == currentWindow();
    if (isOpen)
        leave(id);
    window(id)->onDestroy();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    if (!isOpen)
        return;
    requestFromModule(id);
    enter(id);
}
