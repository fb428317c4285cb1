#pragma once

#include "nordahost_global.h"

#include <QBasicTimer>
#include <QList>
#include <QObject>
#include <QPointer>

class ScrollLabel;
class QWidget;

/**
 * Scrolls the over-long texts of a screen's labels in turn, with one timer for all of them. The
 * timer runs only while a label that overflows is visible: a screen whose texts fit never wakes.
 */
class NORDAHOST_EXPORT SLabelManager : public QObject
{
    Q_OBJECT
    /** Whether a text that has scrolled through starts again. */
    Q_PROPERTY(bool autoRepeat READ autoRepeat WRITE setAutoRepeat)
public:
    /** @param parent  the screen; owns the manager */
    explicit SLabelManager(QWidget *parent);
    ~SLabelManager() override;

    /** Manages a label until it is deleted. */
    void addLabel(ScrollLabel *label);
    /** Whether a text that has scrolled through starts again after a pause. Off at first. */
    void setAutoRepeat(bool on);
    /** Whether texts start again; see `setAutoRepeat()`. */
    bool autoRepeat() const { return m_autoRepeat; }

    /** Notices labels that change their text, size or visibility. */
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    /** Moves every label that scrolls by one step. */
    void timerEvent(QTimerEvent *event) override;

private:
    struct Entry;
    bool advance(Entry &entry);
    void wake();

    QList<Entry> m_entries;
    QBasicTimer m_timer;
    bool m_autoRepeat = false;
};
