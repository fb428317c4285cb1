#include "program/firstpaint.h"

#include <QEvent>
#include <QTimer>
#include <QWidget>

FirstPaint::FirstPaint(QWidget *widget) : QObject(widget)
{
    widget->installEventFilter(this);
}

FirstPaint::~FirstPaint() = default;

// A frame is painted and sent to the display within one event.
bool FirstPaint::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint) {
        watched->removeEventFilter(this);
        QTimer::singleShot(0, this, &FirstPaint::painted);
    }
    return false;
}
