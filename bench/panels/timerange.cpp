#include "panels/timerange.h"

#include <cmath>

static constexpr qint64 shortestMs = 20;
static constexpr qint64 longestMs = qint64(24) * 3600 * 1000;

TimeRange::TimeRange(QObject *parent) : QObject(parent) {}

void TimeRange::place(qint64 beginMs, qint64 spanMs)
{
    beginMs = qMax<qint64>(0, beginMs);
    spanMs = qBound(shortestMs, spanMs, longestMs);
    if (beginMs == m_beginMs && spanMs == m_spanMs)
        return;
    m_beginMs = beginMs;
    m_spanMs = spanMs;
    emit changed();
}

void TimeRange::set(qint64 beginMs, qint64 spanMs)
{
    m_follows = false;
    place(beginMs, spanMs);
}

void TimeRange::move(qint64 byMs)
{
    set(m_beginMs + byMs, m_spanMs);
}

void TimeRange::zoom(qint64 underMs, double steps)
{
    const double span = double(m_spanMs) * std::pow(0.8, steps);
    const auto bounded = qint64(qBound(double(shortestMs), span, double(longestMs)));
    const double share = double(underMs - m_beginMs) / double(m_spanMs);
    place(underMs - qint64(share * double(bounded)), bounded);
}

void TimeRange::show(qint64 ms)
{
    m_follows = false;
    if (ms < m_beginMs || ms > endMs())
        place(ms - m_spanMs / 2, m_spanMs);
}

void TimeRange::setNow(qint64 ms)
{
    if (ms == m_nowMs)
        return;
    m_nowMs = ms;
    if (m_follows)
        showNow();
}

void TimeRange::follow()
{
    m_follows = true;
    showNow();
}

void TimeRange::showNow()
{
    place(m_nowMs - m_spanMs * 9 / 10, m_spanMs);
}

void TimeRange::reset()
{
    m_nowMs = 0;
    follow();
}
