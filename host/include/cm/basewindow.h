#pragma once

#include "nordahost_global.h"
#include "popupinterface.h"
#include "statusbarinterface.h"
#include "windowinterface.h"

#include <QMap>
#include <QObject>
#include <QPointer>
#include <QVariant>
#include <QWidget>

namespace cm {

/**
 * The base of every window that a plugin offers. It keeps the main widget that a window installs,
 * shows and hides it, and has a default for every other operation.
 */
class NORDAHOST_EXPORT BaseWindow : public QObject, public WindowInterface
{
    Q_OBJECT
    Q_INTERFACES(WindowInterface)
public:
    /** @param parent  owns the window, usually the plugin root */
    explicit BaseWindow(QObject *parent);
    ~BaseWindow() override;

    QString name() override;
    void onCreate() override;
    void onDestroy() override;
    /** Shows the main widget. */
    void onShow(const QByteArray &argument) override;
    /** Hides the main widget. */
    void onHide(const QByteArray &argument) override;
    void onEnter() override;
    void onExit() override;
    void onReleased() override;
    QWidget *mainWidget() override;
    /** The base attribute bits: 1, unless changed by `setBaseAttribute()`. */
    int attribute() override;
    void setStatusBar(StatusBarInterface *statusBar) override;
    void setStatusBarAutoHide(bool on) override;
    void setStatusBarVisible(bool on) override;
    void setBackgroundVisible(int layer, bool on) override;
    void setPopup(PopupInterface *popup) override;
    void popupBtnClicked(int popup, int button) override;
    void popupClicked(int popup) override;
    void popupOutsideClicked(int popup) override;
    void popupTimeout(int popup) override;
    /** Accepts: 1. */
    int backEvent() override;
    void setTranslation(const QString &locale) override;
    /** Hands the event to the main widget. */
    bool dispatchEvent(QEvent *event) override;
    /** Leaves the key to the host: 0. */
    int keyEvent(KeyEvent *event) override;

    /** The screen id that the main widget was installed under, -1 before. */
    Q_INVOKABLE
    int screenId() const { return m_screenId; }
    /** A window attribute set with `setWindowAttribute()`; invalid when it was not. */
    Q_INVOKABLE
    QVariant windowAttribute(int key) const { return m_attributes.value(key); }
    /** The base attribute bits of this window. For hosts and tests. */
    Q_INVOKABLE
    void setBaseAttribute(int bits) { m_baseAttribute = bits; }

protected:
    /**
     * Installs a widget as the window's content.
     * It is deleted through `deleteDelay()`, by its new parent, or at last with the window.
     * @param widget  the content; a null pointer empties the window
     * @param id      the screen id
     */
    void setMainWidget(QWidget *widget, int id);
    /** Deletes the main widget once control is back in the event loop. */
    void deleteDelay();
    /**
     * Sets a window attribute of the host.
     * @param key    the attribute's number in the host
     * @param value  its new value
     * @param apply  whether it takes effect at once
     */
    void setWindowAttribute(int key, const QVariant &value, bool apply);

private:
    QPointer<QWidget> m_mainWidget;
    StatusBarInterface *m_statusBar = nullptr;
    PopupInterface *m_popup = nullptr;
    QMap<int, QVariant> m_attributes;
    int m_screenId = -1;
    int m_baseAttribute = 1;
};

} // namespace cm
