#include "plots/plotexport.h"

#include "plots/curvelist.h"

#include <cmath>
#include <limits>

static QByteArray headerLine(const CurveList &curves)
{
    QByteArray line = "seconds";
    for (const CurveList::Item &item : curves.items())
        line += "," + item.curve->name().toUtf8();
    return line + '\n';
}

static QByteArray valueText(double value)
{
    static constexpr int digits = 10;
    return std::isnan(value) ? QByteArray() : QByteArray::number(value, 'g', digits);
}

/** The curves are read side by side, each at its own place. */
class CsvRows
{
public:
    explicit CsvRows(const CurveList &curves)
    {
        for (const CurveList::Item &item : curves.items())
            m_columns.append({&item.curve->samples(), 0});
    }

    QByteArray lines()
    {
        QByteArray lines;
        for (qint64 ms = nextMs(); ms != never; ms = nextMs()) {
            lines += QByteArray::number(double(ms) / 1000, 'f', 3);
            for (Column &column : m_columns)
                lines += "," + valueText(column.takeUntil(ms));
            lines += '\n';
        }
        return lines;
    }

private:
    static constexpr qint64 never = std::numeric_limits<qint64>::max();

    struct Column
    {
        const Samples *samples;
        int next;

        double takeUntil(qint64 ms)
        {
            while (next < samples->size() && samples->msAt(next) <= ms)
                ++next;
            return next > 0 ? samples->valueAt(next - 1) : std::numeric_limits<double>::quiet_NaN();
        }
    };

    qint64 nextMs() const
    {
        qint64 ms = never;
        for (const Column &column : m_columns) {
            if (column.next < column.samples->size())
                ms = qMin(ms, column.samples->msAt(column.next));
        }
        return ms;
    }

    QVector<Column> m_columns;
};

QByteArray curvesAsCsv(const CurveList &curves)
{
    return headerLine(curves) + CsvRows(curves).lines();
}
