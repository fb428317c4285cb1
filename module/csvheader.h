#pragma once

#include "quantities.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace module {

/** What a column of an export holds. */
struct CsvColumn
{
    enum Role { Ignored, Value, Time, RunTime };
    enum Unit { Metric, Fahrenheit, MilesPerHour, Milliseconds };

    Role role = Ignored;
    Quantity quantity = Quantity::Count;
    Unit unit = Metric;
};

/** Decodes a line of an export: UTF-8, or else Latin-1. */
QString csvText(const QByteArray &line);
/** Splits a row at a separator, with quoted fields. */
QStringList csvFields(const QString &row, QChar separator);
/** The separator of a header row: a semicolon, a tab or a comma. */
QChar csvSeparator(const QString &header);
/** What a column with this heading holds. */
CsvColumn csvColumn(const QString &heading);
/** A metric value from a number in the column's unit. */
double metricValue(const CsvColumn &column, double number);
/** How a date such as 03/04/2019 is read. */
enum class DateOrder { MonthFirst, DayFirst };
/** Milliseconds of a time field, a number or a date with a time; -1 for anything else. */
double csvTimeMs(const QString &field, CsvColumn::Unit unit,
                 DateOrder order = DateOrder::MonthFirst);

} // namespace module
