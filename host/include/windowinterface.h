#pragma once

#include <QByteArray>
#include <QString>
#include <QtPlugin>

class KeyEvent;
class PopupInterface;
class StatusBarInterface;
class QEvent;
class QWidget;

/**
 * What the host knows of a window. The order of the operations is the order of their slots and is
 * fixed: hosts and plugins are built apart. All calls come on the GUI thread.
 *
 * Life of a window: `onCreate()` builds its content, `onShow()` and `onEnter()` bring it to the
 * front, `onExit()` and `onHide()` take it away, `onDestroy()` deletes the content. Windows
 * themselves live as long as the plugin root.
 */
class WindowInterface
{
public:
    virtual ~WindowInterface() = default;

    /** The window's name in the host's logs and state files; may be empty. */
    virtual QString name() = 0;
    /** Builds the window's content; called before the first show and again after `onDestroy()`. */
    virtual void onCreate() = 0;
    /** The host needs the memory: deletes the window's content, at once or soon. */
    virtual void onDestroy() = 0;
    /** The window becomes visible. @param argument  what the opener passed, usually empty */
    virtual void onShow(const QByteArray &argument) = 0;
    /** The window is no longer visible. @param argument  what the host passed, usually empty */
    virtual void onHide(const QByteArray &argument) = 0;
    /** The window receives the input, after `onShow()`. */
    virtual void onEnter() = 0;
    /** The window loses the input, before `onHide()`. */
    virtual void onExit() = 0;
    /** The host has released the window. */
    virtual void onReleased() = 0;
    /** The content to show, null before `onCreate()` and after its deletion. */
    virtual QWidget *mainWidget() = 0;
    /** The window's attribute bits; their meaning is the host's. */
    virtual int attribute() = 0;
    /** The host's status bar, for windows that draw into it. */
    virtual void setStatusBar(StatusBarInterface *statusBar) = 0;
    /** Whether the host's status bar hides by itself over the window. */
    virtual void setStatusBarAutoHide(bool on) = 0;
    /** Shows or hides the host's status bar over the window. */
    virtual void setStatusBarVisible(bool on) = 0;
    /** Shows or hides one of the host's background layers behind the window. */
    virtual void setBackgroundVisible(int layer, bool on) = 0;
    /** The host's popup layer, for windows that open popups. */
    virtual void setPopup(PopupInterface *popup) = 0;
    /** A button of a popup was clicked. */
    virtual void popupBtnClicked(int popup, int button) = 0;
    /** A popup itself was clicked. */
    virtual void popupClicked(int popup) = 0;
    /** A touch outside a popup. */
    virtual void popupOutsideClicked(int popup) = 0;
    /** A popup's time ran out. */
    virtual void popupTimeout(int popup) = 0;
    /** The back key. @return 1 when the window accepts that the host closes it, 0 to stay */
    virtual int backEvent() = 0;
    /** The display language changed. @param locale  for instance "de_DE" */
    virtual void setTranslation(const QString &locale) = 0;
    /** An event for the window's content. @return true when it was handled */
    virtual bool dispatchEvent(QEvent *event) = 0;
    /** A hardware key. @return 1 when the window used it, 0 to let the host handle it */
    virtual int keyEvent(KeyEvent *event) = 0;
};

Q_DECLARE_INTERFACE(WindowInterface, "com.stavel.Plugin.WindowInterface/1.0")
