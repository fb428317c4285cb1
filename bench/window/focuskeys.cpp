#include "window/focuskeys.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTabBar>

FocusKeys::FocusKeys(QWidget *window, QWidget *home)
    : QObject(window), m_window(window), m_home(home)
{
    qApp->installEventFilter(this);
}

/** In the window or one of its detached panels, and not in a dialog. */
bool FocusKeys::isOurs(const QWidget *widget) const
{
    for (; widget && widget != m_window; widget = widget->parentWidget()) {
        if (qobject_cast<const QDialog *>(widget))
            return false;
    }
    return widget;
}

/** What takes text. An editor in a table ends with Esc by itself. */
static bool isField(const QWidget *widget)
{
    const QWidget *parent = widget->parentWidget();
    if (parent && qobject_cast<const QAbstractItemView *>(parent->parentWidget()))
        return false;
    return qobject_cast<const QLineEdit *>(widget) ||
           qobject_cast<const QAbstractSpinBox *>(widget);
}

bool FocusKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress && qobject_cast<QTabBar *>(watched) &&
        isOurs(static_cast<QWidget *>(watched)))
        m_home->setFocus();
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
        return false;
    auto *widget = qobject_cast<QWidget *>(watched);
    const auto *key = static_cast<QKeyEvent *>(event);
    if (!widget || widget != QApplication::focusWidget() || !isOurs(widget))
        return false;
    if (event->type() == QEvent::KeyPress)
        return handleKey(widget, key);
    if (key->key() != Qt::Key_Escape || !isField(widget))
        return false;
    event->accept();
    return true;
}

bool FocusKeys::handleKey(QWidget *widget, const QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    auto *button = qobject_cast<QAbstractButton *>(widget);
    if (isReturn && button) {
        button->click();
        return true;
    }
    if (event->key() != Qt::Key_Escape || !isField(widget))
        return false;
    auto *line = qobject_cast<QLineEdit *>(widget);
    if (line && line->isClearButtonEnabled() && !line->text().isEmpty())
        line->clear();
    else
        m_home->setFocus();
    return true;
}
