#pragma once

#include <QString>
#include <QVector>

/** The ticks of an axis, at round values. */
struct Ticks
{
    QVector<double> values;
    double step;
};

/** @param most  how many there may be, two or more */
Ticks ticksOf(double lowest, double highest, int most);
/** The same for a time in seconds, at whole seconds, minutes or hours where it is long. */
Ticks timeTicksOf(double beginSeconds, double endSeconds, int most);

/** A value with as many decimals as the step between ticks has. */
QString tickText(double value, double step);
/** A time as minutes and seconds, or hours, minutes and seconds; with a fraction if steps have. */
QString timeTickText(double seconds, double step);
