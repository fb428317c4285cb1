#include "panels/timelineview.h"

#include "panels/journaltexts.h"
#include "panels/panelparts.h"
#include "session/session.h"
#include "tools/themecolors.h"

#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

#include <cmath>

static constexpr int captionWidth = 70;
static constexpr int scaleHeight = 20;
static constexpr int textRoom = 60; // least pixels for the text of an entry

static QString captionOf(int lane)
{
    static const char *const captions[Journal::KindCount] = {
        QT_TRANSLATE_NOOP("TimelineView", "Signals"), QT_TRANSLATE_NOOP("TimelineView", "Actions"),
        QT_TRANSLATE_NOOP("TimelineView", "Calls"),   QT_TRANSLATE_NOOP("TimelineView", "Pages"),
        QT_TRANSLATE_NOOP("TimelineView", "Sound"),   QT_TRANSLATE_NOOP("TimelineView", "Marks"),
    };
    return TimelineView::tr(captions[lane]);
}

TimelineView::TimelineView(TimeRange *range, QWidget *parent) : QWidget(parent), m_range(range)
{
    setMinimumHeight(140);
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(range, &TimeRange::changed, this, qOverload<>(&QWidget::update));
}

void TimelineView::setSession(const Session *session)
{
    m_session = session;
    m_range->reset();
    clearMoment();
}

void TimelineView::setMoment(qint64 ms)
{
    m_momentMs = ms;
    m_range->show(ms);
    update();
}

void TimelineView::clearMoment()
{
    m_momentMs = -1;
    m_range->follow();
    refresh();
}

void TimelineView::refresh()
{
    if (m_session)
        m_range->setNow(m_session->nowMs());
    update();
}

qint64 TimelineView::msAt(int x) const
{
    const double share = double(x - captionWidth) / qMax(1, width() - captionWidth);
    return beginMs() + qint64(std::llround(share * double(spanMs())));
}

int TimelineView::xAt(qint64 ms) const
{
    static constexpr double farOut = 1e6; // beyond any screen
    const double share = double(ms - beginMs()) / double(spanMs());
    return captionWidth + int(qBound(-farOut, share * (width() - captionWidth), farOut));
}

int TimelineView::laneHeight() const
{
    return (height() - scaleHeight) / Journal::KindCount;
}

int TimelineView::laneAt(int y) const
{
    return y < scaleHeight ? -1 : qMin((y - scaleHeight) / laneHeight(), Journal::KindCount - 1);
}

const theme::Colors &TimelineView::colors() const
{
    return theme::colors(palette());
}

void TimelineView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), colors().window);
    for (int lane = 0; lane < Journal::KindCount; ++lane) {
        const QRect place(0, scaleHeight + lane * laneHeight(), width(), laneHeight());
        painter.fillRect(place.adjusted(0, 0, 0, -1), lane % 2 ? colors().window : colors().panel);
        painter.setPen(colors().secondary);
        painter.drawText(place.adjusted(8, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
                         captionOf(lane));
        if (m_session)
            drawLane(&painter, lane);
    }
    drawScale(&painter);
}

/**
 * A lane costs one search per pixel, however many entries there are. The height of a bar grows with
 * their number.
 */
void TimelineView::drawLane(QPainter *painter, int lane) const
{
    const auto kind = Journal::Kind(lane);
    const Journal *journal = m_session->journal();
    const int top = scaleHeight + lane * laneHeight();
    const int room = laneHeight() - 4;
    const int first = journal->lowerBound(kind, beginMs());
    const int last = journal->lowerBound(kind, beginMs() + spanMs() + 1);
    const bool hasRoom = (last - first) * textRoom < width() - captionWidth;
    int before = first;
    for (int x = captionWidth; x < width() && before < last; ++x) {
        const int next = qMin(last, journal->lowerBound(kind, msAt(x + 1)));
        if (next > before) {
            const int count = next - before;
            const int bar =
                hasRoom ? room : qMin(room, int(std::lround(6 + 4 * std::log2(double(count)))));
            painter->fillRect(x, top + 2 + room - bar, 1, bar, kindColor(kind, palette()));
        }
        before = next;
    }
    // A page stays open until the next one, so the first may have opened before the left edge.
    if (kind == Journal::Page && first > 0)
        drawTexts(painter, lane, first - 1, qMin(first, last));
    if (hasRoom)
        drawTexts(painter, lane, first, last);
}

void TimelineView::drawTexts(QPainter *painter, int lane, int first, int last) const
{
    const Journal *journal = m_session->journal();
    const QVector<int> &places = journal->ofKind(Journal::Kind(lane));
    const int top = scaleHeight + lane * laneHeight();
    painter->setPen(colors().text);
    const auto xOf = [&](int i) {
        return i < places.size() ? xAt(journal->entries()[places[i]].ms) : width();
    };
    for (int i = first, next = first; i < last; i = next) {
        const Journal::Entry &entry = journal->entries()[places[i]];
        // Entries within a few pixels are shown by the tool tip only.
        for (next = i + 1; next < places.size() && xOf(next) <= xOf(i) + 2;)
            ++next;
        const int x = qMax(captionWidth, xOf(i)) + 4;
        const QRect room(x, top, qMin(xOf(next), width()) - x - 2, laneHeight());
        if (room.width() > textRoom / 2)
            painter->drawText(room, Qt::AlignVCenter | Qt::AlignLeft,
                              painter->fontMetrics().elidedText(entryText(journal, entry),
                                                                Qt::ElideRight, room.width()));
    }
}

void TimelineView::drawScale(QPainter *painter) const
{
    static constexpr int leastPixels = 90;
    const double pixelsPerMs = double(width() - captionWidth) / double(spanMs());
    qint64 step = 10;
    for (const qint64 next : {20, 50, 100, 200, 500, 1000, 2000, 5000, 10000, 30000, 60000, 300000,
                              600000, 1800000, 3600000, 14400000}) {
        if (double(step) * pixelsPerMs >= leastPixels)
            break;
        step = next;
    }
    const QString moment = m_momentMs < 0 ? QString() : tr("%1 s").arg(secondsText(m_momentMs));
    const QRect label(xAt(m_momentMs), 0, painter->fontMetrics().horizontalAdvance(moment) + 10,
                      moment.isEmpty() ? 0 : scaleHeight);
    painter->setPen(colors().secondary);
    for (qint64 ms = (beginMs() / step + 1) * step; ms < beginMs() + spanMs(); ms += step) {
        const QString text = tr("%1 s").arg(QString::number(double(ms) / 1000, 'g', 8));
        const QRect place(xAt(ms) + 4, 0, painter->fontMetrics().horizontalAdvance(text),
                          scaleHeight);
        painter->fillRect(xAt(ms), 0, 1, height(), colors().hairline);
        if (!place.intersects(label))
            painter->drawText(place, Qt::AlignVCenter, text);
    }
    const int now = m_session ? xAt(m_session->nowMs()) : -1;
    if (now >= captionWidth && now < width())
        painter->fillRect(now, 0, 1, height(), colors().text);
    if (m_momentMs >= 0) {
        painter->fillRect(label.x() - 1, 0, 2, height(), colors().red);
        painter->fillRect(label, colors().red);
        painter->setPen(colors().window);
        painter->drawText(label, Qt::AlignCenter, moment);
    }
}

void TimelineView::wheelEvent(QWheelEvent *event)
{
    m_range->zoom(msAt(int(event->position().x())), double(event->angleDelta().y()) / 120);
    event->accept();
}

void TimelineView::mousePressEvent(QMouseEvent *event)
{
    m_dragX = event->x();
    m_hasDragged = false;
    m_isScrubbing = event->y() < scaleHeight;
}

void TimelineView::requestMoment(int x)
{
    if (m_session)
        emit momentRequested(qBound<qint64>(0, msAt(x), m_session->nowMs()));
}

void TimelineView::mouseMoveEvent(QMouseEvent *event)
{
    static constexpr int slack = 4; // pixels that a click may move
    if (m_dragX < 0 || (!m_hasDragged && qAbs(event->x() - m_dragX) < slack))
        return;
    m_hasDragged = true;
    if (m_isScrubbing) {
        requestMoment(event->x());
        return;
    }
    m_range->move(msAt(m_dragX) - msAt(event->x()));
    m_dragX = event->x();
}

void TimelineView::mouseReleaseEvent(QMouseEvent *event)
{
    m_dragX = -1;
    if (!m_hasDragged && event->x() >= captionWidth)
        requestMoment(event->x());
}

/** A tool tip with the entries under the pointer. */
bool TimelineView::event(QEvent *event)
{
    static constexpr int reach = 4; // pixels
    if (event->type() != QEvent::ToolTip || !m_session)
        return QWidget::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const int lane = laneAt(help->y());
    if (lane < 0)
        return true;
    const QStringList lines = entryLines(m_session->journal(), Journal::Kind(lane),
                                         msAt(help->x() - reach), msAt(help->x() + reach));
    QToolTip::showText(help->globalPos(), lines.join(QLatin1Char('\n')), this);
    return true;
}
