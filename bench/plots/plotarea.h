#pragma once

#include "plots/plotlane.h"

#include <QPointer>
#include <QWidget>

class PlotCursor;
class Session;
class TimeRange;

/**
 * The lanes below each other, on one scale of time. The wheel zooms at the pointer, dragging moves,
 * and a click requests a moment, as on the timeline.
 */
class PlotArea : public QWidget
{
    Q_OBJECT
public:
    PlotArea(CurveList *curves, TimeRange *range, QWidget *parent = nullptr);
    ~PlotArea() override;

    void setSession(const Session *session);
    /** The rewound moment; -1 for none. */
    void setMoment(qint64 ms);
    /** Draws what has changed. */
    void refresh();

    qint64 msAt(int x) const;
    int xAt(qint64 ms) const;
    /** The moment under the pointer; -1 for none. */
    qint64 cursorMs() const { return m_cursorMs; }
    qint64 momentMs() const { return m_momentMs; }
    /** The pixels between the axis and the right edge. */
    QRect canvasRect() const;
    const QVector<PlotLane *> &lanes() const { return m_lanes; }

    QSize minimumSizeHint() const override;

signals:
    void momentRequested(qint64 ms);
    void cursorMoved();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    bool event(QEvent *event) override;

private:
    void makeLanes();
    void layOut();
    int timeScaleHeight() const;
    void drawTimeScale(QPainter *painter) const;
    void alignAxes();
    bool areLanesCurrent() const;
    PlotLane *laneOf(const QString &scale) const;
    QVector<PlotMark> marks() const;
    void addMarks(int kind, QVector<PlotMark> *marks) const;
    void setCursor(qint64 ms);
    QString tipAt(int x) const;

    CurveList *m_curves;
    TimeRange *m_range;
    PlotCursor *m_cursor;
    QPointer<const Session> m_session;
    QVector<PlotLane *> m_lanes;
    QStringList m_shownCurves; // with their scales, as the lanes have them
    int m_axisWidth = 0;
    qint64 m_cursorMs = -1;
    qint64 m_momentMs = -1;
    int m_dragX = -1;
    bool m_hasDragged = false;
};
