#include "report/chart.h"

#include "report/axis.h"
#include "report/html.h"

#include <cmath>

static constexpr int mostValueTicks = 5;
static constexpr int mostTimeTicks = 7;
static constexpr int plotHeight = 120;

struct Range
{
    double lowest;
    double highest;

    double span() const { return highest - lowest; }
};

/** Of the values, with room above and below; never empty. */
static Range rangeOf(const QVector<QPointF> &points)
{
    static constexpr double room = 0.06;
    Range range = {std::numeric_limits<double>::infinity(),
                   -std::numeric_limits<double>::infinity()};
    for (const QPointF &point : points) {
        if (std::isnan(point.y()))
            continue;
        range.lowest = qMin(range.lowest, point.y());
        range.highest = qMax(range.highest, point.y());
    }
    if (range.lowest > range.highest)
        return {0, 1};
    const double margin =
        range.span() > 0 ? room * range.span() : qMax(1.0, room * std::abs(range.lowest));
    return {range.lowest - margin, range.highest + margin};
}

static QString number(double value)
{
    return QString::number(value, 'g', 7);
}

static QString percent(double share)
{
    return number(100 * share) + QLatin1Char('%');
}

/** In seconds and values: a value holds until the next one. */
static QString pathOf(const QVector<QPointF> &points, double endSeconds)
{
    QStringList steps;
    bool isGap = true;
    for (const QPointF &point : points) {
        if (!isGap)
            steps.append(QLatin1Char('H') + number(point.x()));
        if (!std::isnan(point.y()))
            steps.append(isGap ? QStringLiteral("M%1 %2").arg(number(point.x()), number(point.y()))
                               : QLatin1Char('V') + number(point.y()));
        isGap = std::isnan(point.y());
    }
    if (!isGap)
        steps.append(QLatin1Char('H') + number(endSeconds));
    return steps.join(QString());
}

static void writeValueTicks(Html *html, const Range &range)
{
    const Ticks ticks = ticksOf(range.lowest, range.highest, mostValueTicks);
    for (const double value : ticks.values) {
        const double y = plotHeight * (range.highest - value) / range.span();
        html->element("line", {},
                      {{"x1", "0"}, {"x2", "100%"}, {"y1", number(y)}, {"y2", number(y)}});
        html->element("text", tickText(value, ticks.step),
                      {{"x", "-6"}, {"y", number(y)}, {"class", "value"}});
    }
}

/** The labels at the ends stay within the drawing. */
static QString anchorAt(double share)
{
    static constexpr double nearEnd = 0.04;
    return share < nearEnd       ? QStringLiteral("start")
           : share > 1 - nearEnd ? QStringLiteral("end")
                                 : QStringLiteral("middle");
}

static void writeTimeTicks(Html *html, const Chart &chart)
{
    static constexpr int tickLength = 4;
    static constexpr int baseline = plotHeight + 17;
    const double span = chart.endSeconds - chart.beginSeconds;
    const Ticks ticks = timeTicksOf(chart.beginSeconds, chart.endSeconds, mostTimeTicks);
    for (const double seconds : ticks.values) {
        const double share = (seconds - chart.beginSeconds) / span;
        html->element("line", {},
                      {{"x1", percent(share)},
                       {"x2", percent(share)},
                       {"y1", number(plotHeight)},
                       {"y2", number(plotHeight + tickLength)}});
        html->element("text", timeTickText(seconds, ticks.step),
                      {{"x", percent(share)},
                       {"y", number(baseline)},
                       {"class", "time"},
                       {"data-seconds", number(seconds)},
                       {"text-anchor", anchorAt(share)}});
    }
}

/** The path has its own coordinates, so that it is as wide as the page and its labels are not. */
static void writeCurve(Html *html, const Chart &chart, const Range &range)
{
    const QString box =
        QStringLiteral("%1 0 %2 %3")
            .arg(number(chart.beginSeconds), number(chart.endSeconds - chart.beginSeconds),
                 number(range.span()));
    html->begin("svg", {{"viewBox", box},
                        {"preserveAspectRatio", "none"},
                        {"width", "100%"},
                        {"height", number(plotHeight)}});
    html->element(
        "path", {},
        {{"d", pathOf(chart.points, chart.endSeconds)},
         {"transform", QStringLiteral("matrix(1 0 0 -1 0 %1)").arg(number(range.highest))},
         {"vector-effect", "non-scaling-stroke"}});
    html->end();
}

void writeChart(Html *html, const Chart &chart)
{
    const Range range = rangeOf(chart.points);
    html->begin("figure", {{"class", "chart"},
                           {"data-begin", number(chart.beginSeconds)},
                           {"data-end", number(chart.endSeconds)},
                           {"data-unit", chart.unit}});
    html->begin("figcaption").element("b", chart.name);
    html->element("span", chart.unit).element("output", {}).end();
    html->begin("svg", {{"role", "img"},
                        {"aria-label", chart.name},
                        {"width", "100%"},
                        {"height", number(plotHeight + 24)}});
    writeValueTicks(html, range);
    writeTimeTicks(html, chart);
    writeCurve(html, chart, range);
    html->end().end();
}
