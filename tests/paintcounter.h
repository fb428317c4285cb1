#pragma once

#include <QCoreApplication>
#include <QEvent>

/** Counts the paint events of one widget, or of all of them. */
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QObject *watched = QCoreApplication::instance())
    {
        watched->installEventFilter(this);
    }
    int paints = 0;

private:
    bool eventFilter(QObject *, QEvent *event) override
    {
        paints += event->type() == QEvent::Paint;
        return false;
    }
};
