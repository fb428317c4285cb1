#include "panels/timelineview.h"

#include "pages.h"
#include "panels/panelparts.h"
#include "scenario/scenarioline.h"
#include "session/session.h"
#include "tools/themecolors.h"
#include "values.h"

#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

#include <cmath>

static constexpr int captionWidth = 70;
static constexpr int scaleHeight = 20;
static constexpr qint64 shortestMs = 20;
static constexpr qint64 longestMs = qint64(24) * 3600 * 1000;
static constexpr int textRoom = 60; // least pixels for the text of an entry

struct Lane
{
    const char *caption;
    QColor theme::Colors::*color;
};

static const Lane &laneOf(int kind)
{
    static constexpr Lane lanes[Journal::KindCount] = {
        {QT_TRANSLATE_NOOP("TimelineView", "Signals"), &theme::Colors::accent},
        {QT_TRANSLATE_NOOP("TimelineView", "Actions"), &theme::Colors::amber},
        {QT_TRANSLATE_NOOP("TimelineView", "Calls"), &theme::Colors::green},
        {QT_TRANSLATE_NOOP("TimelineView", "Pages"), &theme::Colors::secondary},
        {QT_TRANSLATE_NOOP("TimelineView", "Sound"), &theme::Colors::violet},
    };
    return lanes[kind];
}

TimelineView::TimelineView(QWidget *parent) : QWidget(parent)
{
    setMinimumHeight(130);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void TimelineView::setSession(const Session *session)
{
    m_session = session;
    m_beginMs = 0;
    clearMoment();
}

void TimelineView::setMoment(qint64 ms)
{
    m_momentMs = ms;
    if (ms < m_beginMs || ms > m_beginMs + m_spanMs)
        m_beginMs = qMax<qint64>(0, ms - m_spanMs / 2);
    update();
}

void TimelineView::clearMoment()
{
    m_momentMs = -1;
    refresh();
}

void TimelineView::setRange(qint64 beginMs, qint64 spanMs)
{
    m_spanMs = qBound(shortestMs, spanMs, longestMs);
    m_beginMs = qMax<qint64>(0, beginMs);
    update();
}

void TimelineView::refresh()
{
    const qint64 nowMs = m_session ? m_session->nowMs() : 0;
    if (follows() && m_dragX < 0)
        m_beginMs = qMax<qint64>(0, nowMs - m_spanMs * 9 / 10);
    update();
}

qint64 TimelineView::msAt(int x) const
{
    const double share = double(x - captionWidth) / qMax(1, width() - captionWidth);
    return m_beginMs + qint64(std::llround(share * double(m_spanMs)));
}

int TimelineView::xAt(qint64 ms) const
{
    static constexpr double farOut = 1e6; // beyond any screen
    const double share = double(ms - m_beginMs) / double(m_spanMs);
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

QString TimelineView::textOf(const Journal::Entry &entry) const
{
    const QString &name = m_session->journal()->nameOf(entry);
    if (entry.kind == Journal::Action)
        return scenarioLine(name, entry.arguments);
    if (entry.kind == Journal::Page)
        return pageText(entry.arguments.value(0).toInt());
    const QString shown = name.section(QStringLiteral("::"), -1);
    return (shown + QLatin1Char(' ') + module::argumentsText(entry.arguments)).trimmed();
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
                         tr(laneOf(lane).caption));
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
    const int first = journal->lowerBound(kind, m_beginMs);
    const int last = journal->lowerBound(kind, m_beginMs + m_spanMs + 1);
    const bool hasRoom = (last - first) * textRoom < width() - captionWidth;
    int before = first;
    for (int x = captionWidth; x < width() && before < last; ++x) {
        const int next = qMin(last, journal->lowerBound(kind, msAt(x + 1)));
        if (next > before) {
            const int count = next - before;
            const int bar =
                hasRoom ? room : qMin(room, int(std::lround(6 + 4 * std::log2(double(count)))));
            painter->fillRect(x, top + 2 + room - bar, 1, bar, colors().*laneOf(lane).color);
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
            painter->drawText(
                room, Qt::AlignVCenter | Qt::AlignLeft,
                painter->fontMetrics().elidedText(textOf(entry), Qt::ElideRight, room.width()));
    }
}

void TimelineView::drawScale(QPainter *painter) const
{
    static constexpr int leastPixels = 90;
    const double pixelsPerMs = double(width() - captionWidth) / double(m_spanMs);
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
    for (qint64 ms = (m_beginMs / step + 1) * step; ms < m_beginMs + m_spanMs; ms += step) {
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
    const double factor = std::pow(0.8, double(event->angleDelta().y()) / 120);
    const qint64 under = msAt(int(event->position().x()));
    const auto span = qint64(double(m_spanMs) * factor);
    const double share = double(under - m_beginMs) / double(m_spanMs);
    setRange(under - qint64(share * double(qBound(shortestMs, span, longestMs))), span);
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
    setRange(m_beginMs + msAt(m_dragX) - msAt(event->x()), m_spanMs);
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
    static constexpr int reach = 4;      // pixels
    static constexpr int mostShown = 12; // entries
    if (event->type() != QEvent::ToolTip || !m_session)
        return QWidget::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const int lane = laneAt(help->y());
    if (lane < 0)
        return true;
    const auto kind = Journal::Kind(lane);
    const Journal *journal = m_session->journal();
    const int first = journal->lowerBound(kind, msAt(help->x() - reach));
    const int last = journal->lowerBound(kind, msAt(help->x() + reach));
    QStringList lines;
    for (int i = first; i < qMin(last, first + mostShown); ++i) {
        const Journal::Entry &entry = journal->entries()[journal->ofKind(kind)[i]];
        lines.append(secondsText(entry.ms) + QStringLiteral("  ") + textOf(entry).left(120));
    }
    if (last - first > mostShown)
        lines.append(tr("and %1 more").arg(last - first - mostShown));
    QToolTip::showText(help->globalPos(), lines.join(QLatin1Char('\n')), this);
    return true;
}
