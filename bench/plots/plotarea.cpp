#include "plots/plotarea.h"

#include "panels/journaltexts.h"
#include "panels/timerange.h"
#include "plots/plotcursor.h"
#include "session/session.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>
#include <qwt_scale_draw.h>

#include <algorithm>
#include <cmath>

static constexpr int lowestLane = 48;
static constexpr Journal::Kind markKinds[] = {Journal::Call, Journal::Page, Journal::Action,
                                              Journal::Mark};

PlotArea::PlotArea(CurveList *curves, TimeRange *range, QWidget *parent)
    : QWidget(parent), m_curves(curves), m_range(range), m_cursor(new PlotCursor(this))
{
    setMouseTracking(true);
}

PlotArea::~PlotArea() = default;

void PlotArea::setSession(const Session *session)
{
    m_session = session;
    m_cursorMs = m_momentMs = -1;
}

void PlotArea::setMoment(qint64 ms)
{
    m_momentMs = ms;
    m_cursor->follow();
}

// ---- Lanes --------------------------------------------------------------------------------------

static QStringList namesWithScales(const CurveList *curves)
{
    QStringList names;
    for (const CurveList::Item &item : curves->items())
        names.append(item.curve->name() + QLatin1Char(' ') + item.curve->scale());
    return names;
}

PlotLane *PlotArea::laneOf(const QString &scale) const
{
    const auto found = std::find_if(m_lanes.begin(), m_lanes.end(),
                                    [&scale](PlotLane *lane) { return lane->scale() == scale; });
    return found == m_lanes.end() ? nullptr : *found;
}

void PlotArea::makeLanes()
{
    qDeleteAll(m_lanes);
    m_lanes.clear();
    for (const CurveList::Item &item : m_curves->items()) {
        PlotLane *lane = laneOf(item.curve->scale());
        if (!lane) {
            lane = new PlotLane(item.curve->scale(), this);
            lane->setVisible(true);
            m_lanes.append(lane);
        }
        lane->addCurve(item);
    }
    m_axisWidth = 0;
    m_shownCurves = namesWithScales(m_curves);
    m_cursor->raise();
    updateGeometry();
    layOut();
    update();
}

/** Lanes of one height, with the scale of time below them. */
void PlotArea::layOut()
{
    m_cursor->setGeometry(rect());
    const int room = height() - timeScaleHeight();
    for (int i = 0; i < m_lanes.size(); ++i) {
        const int top = room * i / m_lanes.size();
        const int bottom = room * (i + 1) / m_lanes.size();
        m_lanes[i]->setGeometry(0, top, width(), bottom - top);
    }
}

int PlotArea::timeScaleHeight() const
{
    return fontMetrics().height() + 8;
}

void PlotArea::drawTimeScale(QPainter *painter) const
{
    const PlotLane *lane = m_lanes.constFirst();
    const QRect canvas = canvasRect();
    QwtScaleDraw scale;
    scale.setAlignment(QwtScaleDraw::BottomScale);
    scale.enableComponent(QwtScaleDraw::Backbone, false);
    scale.setScaleDiv(lane->axisScaleDiv(QwtPlot::xBottom));
    scale.move(canvas.left(), height() - timeScaleHeight());
    scale.setLength(canvas.width() - 1);
    painter->setFont(lane->axisFont(QwtPlot::yLeft));
    scale.draw(painter, palette());
    painter->setPen(palette().color(QPalette::Text));
    painter->drawText(rect().adjusted(0, 0, -4, -4), Qt::AlignRight | Qt::AlignBottom, tr("s"));
}

/** All axes are as wide as the widest; they do not become narrower while the curves move. */
void PlotArea::alignAxes()
{
    int width = m_axisWidth;
    for (const PlotLane *lane : qAsConst(m_lanes))
        width = qMax(width, lane->axisWidth());
    if (width == m_axisWidth)
        return;
    m_axisWidth = width;
    for (PlotLane *lane : qAsConst(m_lanes)) {
        lane->setAxisWidth(width);
        lane->updateLayout();
    }
}

void PlotArea::refresh()
{
    if (m_shownCurves != namesWithScales(m_curves))
        makeLanes();
    PlotView view;
    view.beginMs = m_range->beginMs();
    view.endMs = m_range->endMs();
    view.nowMs = m_session ? m_session->nowMs() : 0;
    view.marks = marks();
    QVector<PlotLane *> changed;
    for (PlotLane *lane : qAsConst(m_lanes)) {
        if (lane->show(view, canvasRect().width()))
            changed.append(lane);
    }
    alignAxes();
    update(0, height() - timeScaleHeight(), width(), timeScaleHeight());
    for (PlotLane *lane : qAsConst(changed))
        lane->replot();
    m_cursor->follow();
}

/** One search for each pixel column, as on the timeline. */
void PlotArea::addMarks(int kind, QVector<PlotMark> *marks) const
{
    const Journal *journal = m_session->journal();
    const QVector<int> &places = journal->ofKind(Journal::Kind(kind));
    int at = journal->lowerBound(Journal::Kind(kind), m_range->beginMs());
    while (at < places.size()) {
        const qint64 ms = journal->entries()[places[at]].ms;
        if (ms > m_range->endMs())
            return;
        marks->append({double(ms) / 1000, kindColor(Journal::Kind(kind), palette())});
        const int next = journal->lowerBound(Journal::Kind(kind), msAt(xAt(ms) + 1));
        at = qMax(at + 1, next);
    }
}

QVector<PlotMark> PlotArea::marks() const
{
    QVector<PlotMark> marks;
    for (const Journal::Kind kind : markKinds) {
        if (m_session && !m_lanes.isEmpty())
            addMarks(kind, &marks);
    }
    return marks;
}

// ---- Places -------------------------------------------------------------------------------------

QRect PlotArea::canvasRect() const
{
    if (m_lanes.isEmpty())
        return rect();
    const QWidget *first = m_lanes.constFirst()->canvas();
    const QWidget *last = m_lanes.constLast()->canvas();
    return QRect(first->mapTo(this, QPoint(0, 0)), last->mapTo(this, last->rect().bottomRight()));
}

qint64 PlotArea::msAt(int x) const
{
    const QRect canvas = canvasRect();
    const double share = double(x - canvas.left()) / qMax(1, canvas.width() - 1);
    return m_range->beginMs() + qint64(std::llround(share * double(m_range->spanMs())));
}

int PlotArea::xAt(qint64 ms) const
{
    static constexpr double farOut = 1e6; // beyond any screen
    const QRect canvas = canvasRect();
    const double share = double(ms - m_range->beginMs()) / double(m_range->spanMs());
    return canvas.left() + int(std::lround(qBound(-farOut, share * (canvas.width() - 1), farOut)));
}

QSize PlotArea::minimumSizeHint() const
{
    return {200, qMax(1, m_lanes.size()) * lowestLane + timeScaleHeight()};
}

// ---- Pointer ------------------------------------------------------------------------------------

void PlotArea::setCursor(qint64 ms)
{
    if (ms == m_cursorMs)
        return;
    m_cursorMs = ms;
    m_cursor->follow();
    emit cursorMoved();
}

void PlotArea::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (!m_lanes.isEmpty()) {
        drawTimeScale(&painter);
        return;
    }
    painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap,
                     tr("Search for a value above, or drag a signal here."));
}

void PlotArea::resizeEvent(QResizeEvent *)
{
    layOut();
    if (isVisible())
        refresh();
}

void PlotArea::wheelEvent(QWheelEvent *event)
{
    m_range->zoom(msAt(int(event->position().x())), double(event->angleDelta().y()) / 120);
    event->accept();
}

void PlotArea::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_dragX = event->x();
    m_hasDragged = false;
}

void PlotArea::mouseMoveEvent(QMouseEvent *event)
{
    static constexpr int slack = 4; // pixels that a click may move
    if (m_dragX >= 0 && (m_hasDragged || qAbs(event->x() - m_dragX) >= slack)) {
        m_hasDragged = true;
        m_range->move(msAt(m_dragX) - msAt(event->x()));
        m_dragX = event->x();
    }
    const QRect canvas = canvasRect();
    const bool isInside = event->x() >= canvas.left() && event->x() <= canvas.right();
    setCursor(isInside && !m_lanes.isEmpty() ? msAt(event->x()) : -1);
}

void PlotArea::mouseReleaseEvent(QMouseEvent *event)
{
    const bool isClick = m_dragX >= 0 && !m_hasDragged && event->x() >= canvasRect().left();
    m_dragX = -1;
    if (isClick && m_session && !m_lanes.isEmpty())
        emit momentRequested(qBound<qint64>(0, msAt(event->x()), m_session->nowMs()));
}

void PlotArea::leaveEvent(QEvent *)
{
    setCursor(-1);
}

QString PlotArea::tipAt(int x) const
{
    static constexpr int reach = 4; // pixels
    QStringList lines;
    for (const Journal::Kind kind : markKinds)
        lines += entryLines(m_session->journal(), kind, msAt(x - reach), msAt(x + reach));
    lines.sort();
    return lines.join(QLatin1Char('\n'));
}

/** A tool tip with the marks under the pointer. */
bool PlotArea::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip || !m_session || m_lanes.isEmpty())
        return QWidget::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    QToolTip::showText(help->globalPos(), tipAt(help->x()), this);
    return true;
}
