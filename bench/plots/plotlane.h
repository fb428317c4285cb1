#pragma once

#include "plots/curvelist.h"

#include <qwt_plot.h>

class CurveItem;
class MarkItem;
class QwtPlotGrid;
class QwtPlotTextLabel;

/** A moment with something to see, in seconds. */
struct PlotMark
{
    double seconds;
    QColor color;

    bool operator==(const PlotMark &other) const
    {
        return seconds == other.seconds && color == other.color;
    }
};

/** What the lanes of a plot show alike. */
struct PlotView
{
    qint64 beginMs = 0;
    qint64 endMs = 1;
    qint64 nowMs = 0; ///< the latest value of a curve holds until then
    QVector<PlotMark> marks;
};

/** The curves with one unit, on an axis of their own. */
class PlotLane : public QwtPlot
{
    Q_OBJECT
public:
    explicit PlotLane(const QString &scale, QWidget *parent = nullptr);
    ~PlotLane() override;

    const QString &scale() const { return m_scale; }
    void addCurve(const CurveList::Item &item);
    /** @param columns  of pixels. @return whether something has changed, which is not drawn yet */
    bool show(const PlotView &view, int columns);
    /** How many points the curves hand to the painter. */
    int pointCount() const;
    /** The width that the labels of the vertical axis need. */
    int axisWidth() const;
    void setAxisWidth(int width);

protected:
    void changeEvent(QEvent *event) override;

private:
    void applyPalette();
    bool showScale(const PlotView &view);

    QString m_scale;
    QVector<CurveItem *> m_curves;
    MarkItem *m_marks;
    QwtPlotGrid *m_grid;
    QwtPlotTextLabel *m_label;
    Samples::Extent m_shown;
    qint64 m_beginMs = -1;
    qint64 m_endMs = -1;
};
