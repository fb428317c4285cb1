#pragma once

#include "panels/panel.h"
#include "session/journal.h"

#include <QPointer>

class Rewind;
class QLabel;
class QToolButton;

/**
 * The session from left to right: signals, deeds, calls, pages and sound, each in a lane of its
 * own. The wheel zooms around the pointer, dragging moves along, and a click, or dragging along
 * the scale, asks for a moment.
 */
class TimelineView : public QWidget
{
    Q_OBJECT
public:
    explicit TimelineView(QWidget *parent = nullptr);

    void setSession(const Session *session);
    /** Marks a moment; without one the line follows the session. */
    void setMoment(qint64 ms);
    void clearMoment();
    bool follows() const { return m_momentMs < 0; }

    qint64 beginMs() const { return m_beginMs; }
    qint64 spanMs() const { return m_spanMs; }
    void setRange(qint64 beginMs, qint64 spanMs);
    /** The session has gone on. */
    void refresh();

    qint64 msAt(int x) const;
    int xAt(qint64 ms) const;

    QSize sizeHint() const override { return {900, 150}; }

signals:
    void momentWanted(qint64 ms);

protected:
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    bool event(QEvent *event) override;

private:
    void wantMoment(int x);
    int laneHeight() const;
    int laneAt(int y) const;
    void drawLane(QPainter *painter, int lane) const;
    void drawTexts(QPainter *painter, int lane, int first, int last) const;
    void drawScale(QPainter *painter) const;
    QString textOf(const Journal::Entry &entry) const;

    QPointer<const Session> m_session;
    qint64 m_beginMs = 0;
    qint64 m_spanMs = 30000;
    qint64 m_momentMs = -1;
    int m_dragX = -1;
    bool m_hasDragged = false;
    bool m_isScrubbing = false;
};

/** The line with what one can do about it: zoom, look at a moment, come back to the present. */
class TimelinePanel : public Panel
{
    Q_OBJECT
public:
    explicit TimelinePanel(Rewind *lookBack, QWidget *parent = nullptr);

    void setSession(Session *session) override;

public slots:
    /** Shows a moment on the line and on the screen. */
    void lookAt(qint64 ms);

protected:
    void refresh() override;

private:
    void showState();

    Rewind *m_rewind;
    TimelineView *m_view;
    QLabel *m_state;
    QToolButton *m_present;
};
