#include "tools/stillscreen.h"

#include "screen.h"
#include "scrolllabel.h"

#include <QAbstractAnimation>
#include <QCoreApplication>

void holdStill(const Screen *screen)
{
    QCoreApplication::processEvents();
    for (QAbstractAnimation *animation : screen->findChildren<QAbstractAnimation *>()) {
        if (animation->state() == QAbstractAnimation::Running)
            animation->setCurrentTime(animation->totalDuration());
    }
    for (ScrollLabel *label : screen->findChildren<ScrollLabel *>())
        label->setScrollOffset(0);
}
