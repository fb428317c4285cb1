#include "panels/widgetpicker.h"

#include "panels/widgetframe.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

WidgetPicker::WidgetPicker(QWidget *screen, QObject *parent) : QObject(parent), m_screen(screen) {}

WidgetPicker::~WidgetPicker()
{
    setPicking(false);
}

void WidgetPicker::setPicking(bool on)
{
    if (on == m_isPicking)
        return;
    m_isPicking = on;
    if (on) {
        QApplication::setOverrideCursor(Qt::CrossCursor);
        qApp->installEventFilter(this);
    } else {
        qApp->removeEventFilter(this);
        QApplication::restoreOverrideCursor();
    }
}

/** The topmost widget at a place, whether it takes touches or not. */
static QWidget *deepestAt(QWidget *widget, QPoint place)
{
    const QObjectList &children = widget->children();
    for (auto child = children.crbegin(); child != children.crend(); ++child) {
        auto *inner = qobject_cast<QWidget *>(*child);
        const bool isShown = inner && inner->isVisible() && !inner->isWindow();
        if (isShown && !qobject_cast<WidgetFrame *>(inner) && inner->geometry().contains(place))
            return deepestAt(inner, place - inner->pos());
    }
    return widget;
}

static bool isOfPointer(QEvent::Type type)
{
    return type == QEvent::MouseMove || type == QEvent::MouseButtonPress ||
           type == QEvent::MouseButtonRelease || type == QEvent::MouseButtonDblClick;
}

bool WidgetPicker::eventFilter(QObject *watched, QEvent *event)
{
    const auto *widget = qobject_cast<QWidget *>(watched);
    if (!isOfPointer(event->type()) || !widget ||
        (widget != m_screen && !m_screen->isAncestorOf(widget)))
        return false;
    const QPoint place = static_cast<QMouseEvent *>(event)->pos();
    emit pointedAt(deepestAt(m_screen, widget->mapTo(m_screen, place)));
    if (event->type() == QEvent::MouseButtonRelease)
        emit picked();
    return true;
}
