#pragma once

#include "report/chart.h"
#include "report/reportpage.h"

#include <QStringList>

/** All that a page about a drive shows, in words and figures. */
struct DriveReport
{
    struct Fact
    {
        QString name;
        QString value;
    };
    /** Something at a moment, as often as it followed itself. */
    struct Event
    {
        qint64 ms;
        QString text;
        QString detail; ///< as the program has it
        int count = 1;
    };

    QString title;
    QString about; ///< what made the report, and when
    QVector<Fact> facts;
    QStringList findings; ///< of the source
    QVector<Chart> charts;
    QVector<ReportPicture> pictures;
    QVector<Event> actions; ///< and pages, sounds and marks
    QVector<Event> calls;
    QVector<Event> warnings;
    QVector<Fact> faults; ///< injected, with their counts
    int warningCount = 0;
    int picturesLeftOut = 0;
    int actionsLeftOut = 0;
    int callsLeftOut = 0;
};

QByteArray pageOf(const DriveReport &report);
