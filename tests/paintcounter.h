#pragma once

#include <QCoreApplication>
#include <QEvent>

/** Counts the paint events of all widgets. */
class PaintCounter : public QObject
{
public:
    PaintCounter() { QCoreApplication::instance()->installEventFilter(this); }
    int paints = 0;

private:
    bool eventFilter(QObject *, QEvent *event) override
    {
        paints += event->type() == QEvent::Paint;
        return false;
    }
};
