#pragma once

#include <QObject>

class QWidget;

/** How many PNG images this process has begun to decode. */
int pngDecodes();

/** Counts the paint and timer events of the process while it lives. */
class EventCounter : public QObject
{
public:
    EventCounter();

    int paints = 0;
    int timers = 0;

private:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

/** The processor's time that the process has taken. */
double processorSeconds();

/** Paints at once what of a window has changed. */
void paintNow(QWidget *window);

/** Lets every sleep of the process return at once, to measure what is done between. */
void skipSleeps(bool skip);

/** Lets the window system take a window in, with all that comes of it. */
void settle(int ms);
