#pragma once

#include "panels/timerange.h"
#include "session/journal.h"

#include <QPointer>
#include <QWidget>

class Session;

namespace theme {
struct Colors;
}

/**
 * The session from left to right: signals, actions, calls, pages, sound and marks, each in a lane
 * of its own. The wheel zooms at the pointer, dragging moves, and a click, or dragging along the
 * scale, requests a moment.
 */
class TimelineView : public QWidget
{
    Q_OBJECT
public:
    explicit TimelineView(TimeRange *range, QWidget *parent = nullptr);

    void setSession(const Session *session);
    /** Shows a moment; without one the view follows the session. */
    void setMoment(qint64 ms);
    void clearMoment();
    bool follows() const { return m_range->follows(); }

    qint64 beginMs() const { return m_range->beginMs(); }
    qint64 spanMs() const { return m_range->spanMs(); }
    void setRange(qint64 beginMs, qint64 spanMs) { m_range->set(beginMs, spanMs); }
    /** The session has changed. */
    void refresh();

    qint64 msAt(int x) const;
    int xAt(qint64 ms) const;

    QSize sizeHint() const override { return {900, 150}; }

signals:
    void momentRequested(qint64 ms);

protected:
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    bool event(QEvent *event) override;

private:
    void requestMoment(int x);
    int laneHeight() const;
    int laneAt(int y) const;
    const theme::Colors &colors() const;
    void drawLane(QPainter *painter, int lane) const;
    void drawTexts(QPainter *painter, int lane, int first, int last) const;
    void drawScale(QPainter *painter) const;

    TimeRange *m_range;
    QPointer<const Session> m_session;
    qint64 m_momentMs = -1;
    int m_dragX = -1;
    bool m_hasDragged = false;
    bool m_isScrubbing = false;
};
