#pragma once

#include <QObject>

class QKeyEvent;
class QWidget;

/**
 * Keys that depend on the focus. In a field Esc clears a filter, and then gives the focus back to
 * the screen instead of going back a page. Return presses the button with the focus, since Space
 * plays and pauses everywhere.
 */
class FocusKeys : public QObject
{
    Q_OBJECT
public:
    /** @param home  gets the focus when a field is left */
    FocusKeys(QWidget *window, QWidget *home);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isOurs(const QWidget *widget) const;
    bool handleKey(QWidget *widget, const QKeyEvent *event);

    QWidget *m_window;
    QWidget *m_home;
};
