#include "plots/plotlane.h"

#include <QEvent>
#include <QPainter>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_layout.h>
#include <qwt_plot_textlabel.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>

#include <cmath>

static constexpr int spacing = 3;      // half of what is between two lanes
static constexpr int rightMargin = 24; // half of a label of the scale of time

/** A value holds until the next one; where it is missing the curve is interrupted. */
class CurveItem : public QwtPlotCurve
{
public:
    CurveItem(const Curve *curve, const QColor &color) : m_curve(curve)
    {
        setStyle(Steps);
        setCurveAttribute(Inverted); // first along, then up or down
        setPen(color, 1.5);
        setPaintAttribute(FilterPoints, false); // they are reduced already
    }

    const Curve *curve() const { return m_curve; }

    bool show(const PlotView &view, int columns)
    {
        const Samples &samples = m_curve->samples();
        QVector<QPointF> points = samples.reduced(view.beginMs, view.endMs, columns);
        const int isDrawn = points.size() * sparseness < columns ? points.size() : 0;
        const double end = double(qMin(view.nowMs, view.endMs)) / 1000;
        if (!points.isEmpty() && points.constLast().x() < end)
            points.append({end, points.constLast().y()});
        if (points == m_points)
            return false;
        m_points = points;
        m_dots = isDrawn;
        setSamples(points);
        return true;
    }

protected:
    void drawCurve(QPainter *painter, int style, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                   const QRectF &canvas, int from, int to) const override
    {
        for (int first = from, next = from; first <= to; first = next + 1) {
            for (next = first; next <= to && !std::isnan(m_points[next].y());)
                ++next;
            if (next - first > 1)
                QwtPlotCurve::drawCurve(painter, style, xMap, yMap, canvas, first, next - 1);
        }
        drawSparse(painter, xMap, yMap);
    }

private:
    static constexpr int sparseness = 12; // pixels for each sample, to show where it is

    void drawSparse(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap) const
    {
        static constexpr double radius = 2.5;
        painter->setPen(Qt::NoPen);
        painter->setBrush(pen().color());
        for (int i = 0; i < m_dots; ++i) {
            if (!std::isnan(m_points[i].y()))
                painter->drawEllipse(QwtScaleMap::transform(xMap, yMap, m_points[i]), radius,
                                     radius);
        }
    }

    const Curve *m_curve;
    QVector<QPointF> m_points;
    int m_dots = 0; // the first points are samples far enough apart to be shown
};

/** Thin lines at the moments of actions, calls, pages and marks. */
class MarkItem : public QwtPlotItem
{
public:
    MarkItem() { setZ(5); } // between the grid and the curves

    bool show(const QVector<PlotMark> &marks)
    {
        if (marks == m_marks)
            return false;
        m_marks = marks;
        return true;
    }

protected:
    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &,
              const QRectF &canvas) const override
    {
        static constexpr double opacity = 0.6;
        painter->setOpacity(opacity);
        for (const PlotMark &mark : m_marks) {
            const double x = std::floor(xMap.transform(mark.seconds));
            painter->fillRect(QRectF(x, canvas.top(), 1, canvas.height()), mark.color);
        }
    }

private:
    QVector<PlotMark> m_marks;
};

PlotLane::PlotLane(const QString &scale, QWidget *parent)
    : QwtPlot(parent)
    , m_scale(scale)
    , m_marks(new MarkItem)
    , m_grid(new QwtPlotGrid)
    , m_label(new QwtPlotTextLabel)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    auto *plotCanvas = new QwtPlotCanvas;
    plotCanvas->setFrameStyle(QFrame::NoFrame);
    plotCanvas->setFocusIndicator(QwtPlotCanvas::NoFocusIndicator);
    setCanvas(plotCanvas);
    plotLayout()->setAlignCanvasToScales(true);
    axisWidget(yLeft)->setMargin(0);
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    setAxisFont(yLeft, small);
    m_grid->attach(this);
    m_marks->attach(this);
    m_label->attach(this);
    enableAxis(xBottom, false); // the area draws one for all lanes
    setContentsMargins(0, spacing, rightMargin, spacing);
    applyPalette();
}

PlotLane::~PlotLane() = default;

void PlotLane::applyPalette()
{
    static constexpr double faint = 0.35;
    QColor line = palette().color(QPalette::Mid);
    line.setAlphaF(faint);
    m_grid->setPen(line, 0);
    setCanvasBackground(palette().brush(QPalette::Base));
    QwtText text(m_scale);
    text.setColor(palette().color(QPalette::Text));
    text.setFont(axisFont(yLeft));
    QColor background = palette().color(QPalette::Base);
    background.setAlphaF(0.75);
    text.setBackgroundBrush(background); // the curves pass behind it
    text.setRenderFlags(Qt::AlignRight | Qt::AlignTop);
    m_label->setText(text);
    replot();
}

void PlotLane::changeEvent(QEvent *event)
{
    QwtPlot::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyPalette();
}

void PlotLane::addCurve(const CurveList::Item &item)
{
    auto *curve = new CurveItem(item.curve.get(), item.color);
    curve->attach(this);
    m_curves.append(curve);
}

bool PlotLane::show(const PlotView &view, int columns)
{
    bool isChanged = m_marks->show(view.marks);
    for (CurveItem *curve : qAsConst(m_curves))
        isChanged = curve->show(view, columns) || isChanged;
    return showScale(view) || isChanged;
}

/** The axis fits what the curves hold in this stretch, with a little room above and below. */
bool PlotLane::showScale(const PlotView &view)
{
    static constexpr double room = 0.08;
    static constexpr int pixelsPerLabel = 26;
    Samples::Extent extent;
    for (const CurveItem *curve : qAsConst(m_curves))
        extent.add(curve->curve()->samples().extentBetween(view.beginMs, view.endMs));
    if (extent.isEmpty())
        extent.add(0);
    const bool isFlat = extent.lowest == extent.highest;
    const double margin = isFlat ? 1 : (extent.highest - extent.lowest) * room;
    setAxisMaxMajor(yLeft, qMax(2, canvas()->height() / pixelsPerLabel));
    if (view.beginMs == m_beginMs && view.endMs == m_endMs && extent.lowest == m_shown.lowest &&
        extent.highest == m_shown.highest)
        return false;
    m_shown = extent;
    m_beginMs = view.beginMs;
    m_endMs = view.endMs;
    setAxisScale(yLeft, extent.lowest - margin, extent.highest + margin);
    setAxisScale(xBottom, double(view.beginMs) / 1000, double(view.endMs) / 1000);
    updateAxes();
    return true;
}

int PlotLane::pointCount() const
{
    int count = 0;
    for (const CurveItem *curve : qAsConst(m_curves))
        count += int(curve->dataSize());
    return count;
}

int PlotLane::axisWidth() const
{
    return int(std::ceil(axisScaleDraw(yLeft)->extent(axisFont(yLeft))));
}

void PlotLane::setAxisWidth(int width)
{
    axisScaleDraw(yLeft)->setMinimumExtent(width);
}
