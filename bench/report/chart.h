#pragma once

#include <QPointF>
#include <QString>
#include <QVector>

class Html;

/** A value over the time of a session, reduced to what a page can show. */
struct Chart
{
    QString name;
    QString unit;
    double beginSeconds = 0;
    double endSeconds = 0;
    QVector<QPointF> points; ///< seconds and value; a value that is not a number is a gap
};

/** Writes it as SVG with a scale on either axis. A chart without a value has only the axis. */
void writeChart(Html *html, const Chart &chart);
