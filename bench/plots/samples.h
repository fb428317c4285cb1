#pragma once

#include <QPointF>
#include <QVector>

#include <array>
#include <limits>

/**
 * A value over session time. Above the samples lie levels of blocks, each of sixteen of the level
 * below, with their lowest and highest values: the extent of any stretch costs a few steps per
 * level, however long it is. A sample that is not a number has gone missing.
 */
class Samples
{
public:
    struct Extent
    {
        double lowest = std::numeric_limits<double>::infinity();
        double highest = -std::numeric_limits<double>::infinity();

        bool isEmpty() const { return lowest > highest; }
        /** Includes a value; one that is not a number is ignored. */
        void add(double value);
        void add(const Extent &other);
    };

    /** In order of time; an earlier one counts as simultaneous with the latest. */
    void append(qint64 ms, double value);
    void dropBefore(qint64 ms);

    bool isEmpty() const { return m_samples.isEmpty(); }
    int size() const { return m_samples.size(); }
    qint64 msAt(int index) const { return m_samples[index].ms; }
    double valueAt(int index) const { return m_samples[index].value; }
    /** The first sample at or after a moment. */
    int lowerBound(qint64 ms) const;
    /** The value that holds at a moment; not a number before the first. */
    double valueAtMs(qint64 ms) const;
    /** Of the samples from one index to before another. */
    Extent extent(int first, int last) const;
    /** Of what holds during a stretch of time. */
    Extent extentBetween(qint64 beginMs, qint64 endMs) const;

    /**
     * What a curve of so many pixels needs, in seconds: at most four points for each pixel column,
     * among them its lowest and highest, and one on either side.
     */
    QVector<QPointF> reduced(qint64 beginMs, qint64 endMs, int columns) const;

private:
    struct Sample
    {
        qint64 ms;
        double value;
    };
    static constexpr int bits = 4;
    static constexpr int levelCount = 5;
    using Level = QVector<Extent>;

    static int shiftOf(int level) { return bits * (level + 1); }
    qint64 firstBlock(int level) const { return m_first >> shiftOf(level); }
    /** The highest level with a block that begins at a sample and ends by another; -1 for none. */
    static int levelAt(qint64 begin, qint64 end);
    QPointF point(int index, double value) const;
    void addColumn(int first, int last, QVector<QPointF> *points) const;

    QVector<Sample> m_samples;
    std::array<Level, levelCount> m_levels;
    qint64 m_first = 0; // number of the first sample that is kept: blocks begin at multiples
};
