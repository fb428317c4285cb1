#pragma once

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QTimerEvent>

/** Lets each running timer of an object fire once, at once. @return how many there were */
inline int fireTimers(QObject *object)
{
    const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(object);
    for (const QAbstractEventDispatcher::TimerInfo &timer : timers) {
        QTimerEvent event(timer.timerId);
        QCoreApplication::sendEvent(object, &event);
    }
    return timers.size();
}
