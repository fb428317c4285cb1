#include "report/axis.h"

#include <algorithm>
#include <cmath>

static Ticks ticksAt(double lowest, double highest, double step)
{
    static constexpr double slack = 1e-9; // what a division leaves
    Ticks ticks = {{}, step};
    const double first = std::ceil(lowest / step - slack);
    const double last = std::floor(highest / step + slack);
    for (double i = first; i <= last; ++i)
        ticks.values.append(i * step);
    return ticks;
}

/** The smallest of 1, 2 and 5 times a power of ten that gives no more intervals than this. */
static double roundStep(double span, int intervals)
{
    const double power = std::pow(10, std::floor(std::log10(span / intervals)));
    for (const double factor : {1, 2, 5}) {
        if (span / (factor * power) <= intervals)
            return factor * power;
    }
    return 10 * power;
}

Ticks ticksOf(double lowest, double highest, int most)
{
    return ticksAt(lowest, highest, roundStep(highest - lowest, most - 1));
}

Ticks timeTicksOf(double beginSeconds, double endSeconds, int most)
{
    static constexpr double steps[] = {1,   2,   5,    10,   15,   30,    60,    120,   300,
                                       600, 900, 1800, 3600, 7200, 14400, 21600, 43200, 86400};
    const double span = endSeconds - beginSeconds;
    if (span < most - 1)
        return ticksOf(beginSeconds, endSeconds, most);
    const auto *const step = std::find_if(std::begin(steps), std::end(steps),
                                          [=](double step) { return span / step <= most - 1; });
    return step == std::end(steps) ? ticksOf(beginSeconds, endSeconds, most)
                                   : ticksAt(beginSeconds, endSeconds, *step);
}

static int decimalsOf(double step)
{
    return step < 1 ? int(std::ceil(-std::log10(step) - 1e-9)) : 0;
}

QString tickText(double value, double step)
{
    return QString::number(value, 'f', decimalsOf(step));
}

QString timeTickText(double seconds, double step)
{
    const int decimals = decimalsOf(step);
    const double parts = std::pow(10, decimals); // of a second: 59.9996 s may be a whole minute
    const auto total = qint64(std::llround(seconds * parts));
    const qint64 minutes = total / qint64(60 * parts);
    const QString rest =
        QString::number(double(total) / parts - double(minutes) * 60, 'f', decimals)
            .rightJustified(decimals > 0 ? decimals + 3 : 2, QLatin1Char('0'));
    if (minutes < 60)
        return QStringLiteral("%1:%2").arg(minutes).arg(rest);
    return QStringLiteral("%1:%2:%3")
        .arg(minutes / 60)
        .arg(minutes % 60, 2, 10, QLatin1Char('0'))
        .arg(rest);
}
