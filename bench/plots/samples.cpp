#include "plots/samples.h"

#include <algorithm>
#include <cmath>

void Samples::Extent::add(double value)
{
    // Both are false for what is not a number.
    if (value < lowest)
        lowest = value;
    if (value > highest)
        highest = value;
}

void Samples::Extent::add(const Extent &other)
{
    lowest = qMin(lowest, other.lowest);
    highest = qMax(highest, other.highest);
}

void Samples::append(qint64 ms, double value)
{
    const qint64 number = m_first + m_samples.size();
    m_samples.append({m_samples.isEmpty() ? ms : qMax(ms, m_samples.constLast().ms), value});
    for (int level = 0; level < levelCount; ++level) {
        const auto block = int((number >> shiftOf(level)) - firstBlock(level));
        if (block == m_levels[size_t(level)].size())
            m_levels[size_t(level)].append(Extent());
        m_levels[size_t(level)][block].add(value);
    }
}

/** A block at the front that loses only a part keeps the old extent; extent() never uses it. */
void Samples::dropBefore(qint64 ms)
{
    const int gone = lowerBound(ms);
    m_samples.remove(0, gone);
    for (int level = 0; level < levelCount; ++level) {
        Level &blocks = m_levels[size_t(level)];
        const auto goneBlocks = int(((m_first + gone) >> shiftOf(level)) - firstBlock(level));
        blocks.remove(0, qMin(goneBlocks, blocks.size()));
    }
    m_first += gone;
}

int Samples::lowerBound(qint64 ms) const
{
    const auto found =
        std::lower_bound(m_samples.cbegin(), m_samples.cend(), ms,
                         [](const Sample &sample, qint64 moment) { return sample.ms < moment; });
    return int(found - m_samples.cbegin());
}

double Samples::valueAtMs(qint64 ms) const
{
    const int after = lowerBound(ms + 1);
    return after > 0 ? m_samples[after - 1].value : std::numeric_limits<double>::quiet_NaN();
}

int Samples::levelAt(qint64 begin, qint64 end)
{
    int level = -1;
    while (level + 1 < levelCount) {
        const qint64 length = qint64(1) << shiftOf(level + 1);
        if (begin % length != 0 || begin + length > end)
            break;
        ++level;
    }
    return level;
}

Samples::Extent Samples::extent(int first, int last) const
{
    Extent extent;
    const qint64 end = m_first + last;
    for (qint64 at = m_first + first; at < end;) {
        const int level = levelAt(at, end);
        if (level < 0) {
            extent.add(m_samples[int(at++ - m_first)].value);
            continue;
        }
        extent.add(m_levels[size_t(level)][int((at >> shiftOf(level)) - firstBlock(level))]);
        at += qint64(1) << shiftOf(level);
    }
    return extent;
}

Samples::Extent Samples::extentBetween(qint64 beginMs, qint64 endMs) const
{
    return extent(qMax(0, lowerBound(beginMs) - 1), lowerBound(endMs + 1));
}

QPointF Samples::point(int index, double value) const
{
    return {double(m_samples[index].ms) / 1000, value};
}

/** A column begins and ends with the values that its neighbours connect to. */
void Samples::addColumn(int first, int last, QVector<QPointF> *points) const
{
    const Extent whole = extent(first, last);
    points->append(point(first, m_samples[first].value));
    if (!whole.isEmpty()) {
        points->append(point(first, whole.lowest));
        points->append(point(first, whole.highest));
    }
    points->append(point(last - 1, m_samples[last - 1].value));
}

QVector<QPointF> Samples::reduced(qint64 beginMs, qint64 endMs, int columns) const
{
    static constexpr int pointsPerColumn = 4;
    const int first = qMax(0, lowerBound(beginMs) - 1);
    const int last = qMin(size(), lowerBound(endMs) + 1);
    QVector<QPointF> points;
    if (last - first <= columns * pointsPerColumn) {
        for (int i = first; i < last; ++i)
            points.append(point(i, m_samples[i].value));
        return points;
    }
    points.reserve((columns + 2) * pointsPerColumn);
    const double width = double(endMs - beginMs) / columns;
    int from = first;
    for (int column = 1; from < last; ++column) {
        const bool isBeyond = column > columns;
        const int to =
            isBeyond ? last : qMin(last, lowerBound(beginMs + qint64(std::ceil(column * width))));
        if (to > from)
            addColumn(from, to, &points);
        from = qMax(from, to);
    }
    return points;
}
