#include "obdcsv.h"

#include "csvheader.h"
#include "driveclock.h"
#include "linereader.h"
#include "missingvalues.h"

#include <QFileInfo>

namespace module {

static constexpr int longestPreamble = 20; // lines that an app may write above its header

/** Reads the rows below a header. */
class CsvReader
{
public:
    explicit CsvReader(const QString &header) : m_separator(csvSeparator(header))
    {
        QVector<bool> taken(int(Quantity::Count), false);
        for (const QString &heading : csvFields(header, m_separator)) {
            CsvColumn column = csvColumn(heading);
            // Of two columns with the same quantity, the first one is used.
            if (column.role == CsvColumn::Value) {
                if (taken[int(column.quantity)])
                    column.role = CsvColumn::Ignored;
                taken[int(column.quantity)] = true;
            }
            m_columns.append(column);
        }
    }

    bool isHeader() const { return has(CsvColumn::Value); }
    bool readRow(const QByteArray &line, bool cutOff);
    SampleLog take(const QString &path, int badLines);

private:
    bool has(CsvColumn::Role role) const
    {
        return std::any_of(m_columns.begin(), m_columns.end(),
                           [role](const CsvColumn &column) { return column.role == role; });
    }
    QString withPoint(QString field) const;
    bool number(const QString &field, double *value) const;
    void readField(int index, const QString &field);
    void readTime(int index, const QString &field);

    struct Row
    {
        double time = -1;     // ms of the file's own clock, -1 for none
        double dayFirst = -1; // the same, with the day before the month in its date
        double runTime = -1;  // whole seconds of the engine's run time, -1 for none
        int firstSample = 0;
    };
    bool knows(double Row::*clock) const;
    int count(double Row::*clock) const;
    bool isDateAmbiguous() const;
    void chooseDateOrder();
    void spreadRows();
    void spreadOverRunTime();

    QChar m_separator;
    QVector<CsvColumn> m_columns;
    int m_timeColumn = -1;
    QString m_firstTime;      // as it is in the file
    QString m_unreadableTime; // the first one
    SampleLog m_log;
    QVector<Row> m_rows;
};

/** A comma separates decimals where it does not separate fields. */
QString CsvReader::withPoint(QString field) const
{
    if (m_separator == QLatin1Char(';'))
        field.replace(QLatin1Char(','), QLatin1Char('.'));
    return field;
}

bool CsvReader::number(const QString &field, double *value) const
{
    bool isNumber = false;
    *value = withPoint(field).toDouble(&isNumber);
    return isNumber && qIsFinite(*value);
}

/** The first column with a time is the clock; another one may run differently. */
void CsvReader::readTime(int index, const QString &field)
{
    if (m_timeColumn >= 0 && m_timeColumn != index)
        return;
    Row &row = m_rows.last();
    const QString text = withPoint(field);
    const CsvColumn::Unit unit = m_columns[index].unit;
    row.time = csvTimeMs(text, unit);
    const bool hasOrder = field.contains(QLatin1Char('/'));
    row.dayFirst = hasOrder ? csvTimeMs(text, unit, DateOrder::DayFirst) : row.time;
    if (row.time < 0 && row.dayFirst < 0) {
        if (m_unreadableTime.isEmpty())
            m_unreadableTime = field;
        return;
    }
    if (m_timeColumn < 0)
        m_firstTime = field;
    m_timeColumn = index;
}

void CsvReader::readField(int index, const QString &field)
{
    const CsvColumn &column = m_columns[index];
    Row &row = m_rows.last();
    double value = 0;
    switch (column.role) {
    case CsvColumn::Time:
        readTime(index, field);
        break;
    case CsvColumn::RunTime:
        if (number(field, &value) && value >= 0 && value < 1e7)
            row.runTime = value;
        break;
    case CsvColumn::Value:
        if (number(field, &value))
            m_log.add(0, column.quantity, metricValue(column, value));
        else
            ++m_log.droppedValues;
        break;
    case CsvColumn::Ignored:
        break;
    }
}

bool CsvReader::readRow(const QByteArray &line, bool cutOff)
{
    if (line.contains('\0'))
        return false; // binary data
    QStringList fields = csvFields(csvText(line), m_separator);
    // The last number of a line without an end may lack its last digits.
    if (cutOff && fields.size() < m_columns.size())
        fields.removeLast();

    Row row;
    row.firstSample = m_log.samples.size();
    const int beyondBefore = m_log.beyondCapacity;
    m_rows.append(row);
    for (int i = 0; i < qMin(fields.size(), m_columns.size()); ++i)
        readField(i, fields[i]);
    if (m_log.samples.size() > row.firstSample)
        return true;
    m_rows.removeLast();
    return m_log.beyondCapacity > beyondBefore;
}

int CsvReader::count(double Row::*clock) const
{
    return int(std::count_if(m_rows.begin(), m_rows.end(),
                             [clock](const Row &row) { return row.*clock >= 0; }));
}

bool CsvReader::knows(double Row::*clock) const
{
    return count(clock) > 0;
}

/** Within one day, both orders of its date give the same drive. */
bool CsvReader::isDateAmbiguous() const
{
    const Row &first = m_rows.constFirst();
    return std::any_of(m_rows.begin(), m_rows.end(), [&first](const Row &row) {
        return row.time - first.time != row.dayFirst - first.dayFirst;
    });
}

/** One order for all dates: the one in which all of them exist. */
void CsvReader::chooseDateOrder()
{
    const int monthFirst = count(&Row::time);
    const int dayFirst = count(&Row::dayFirst);
    if (dayFirst > monthFirst) {
        for (Row &row : m_rows)
            row.time = row.dayFirst;
    } else if (dayFirst == monthFirst && isDateAmbiguous()) {
        m_log.remarks.append(QStringLiteral("Dates such as '%1' taken as month/day/year")
                                 .arg(excerpt(m_firstTime.toUtf8())));
    }
}

/** Gives every row its time. */
void CsvReader::spreadRows()
{
    if (knows(&Row::time))
        return;
    if (knows(&Row::runTime)) {
        m_log.remarks.append(QStringLiteral("Time taken from the engine's run time"));
        spreadOverRunTime();
        return;
    }
    const QString problem = m_unreadableTime.isEmpty()
                                ? QStringLiteral("No time in this file")
                                : QStringLiteral("Times such as '%1' are not understood")
                                      .arg(excerpt(m_unreadableTime.toUtf8()));
    m_log.remarks.append(QStringLiteral("%1: played at %2 row per second")
                             .arg(problem, QString::number(assumedRowsPerSecond)));
    for (int i = 0; i < m_rows.size(); ++i)
        m_rows[i].time = 1000.0 * i / assumedRowsPerSecond;
}

/** The run time has whole seconds only: the rows of a second share it evenly. */
void CsvReader::spreadOverRunTime()
{
    for (int first = 0; first < m_rows.size();) {
        int next = first;
        while (next < m_rows.size() && m_rows[next].runTime == m_rows[first].runTime)
            ++next;
        for (int i = first; i < next && m_rows[i].runTime >= 0; ++i)
            m_rows[i].time = 1000.0 * (m_rows[i].runTime + double(i - first) / (next - first));
        first = next;
    }
}

SampleLog CsvReader::take(const QString &path, int badLines)
{
    if (!m_rows.isEmpty())
        chooseDateOrder();
    spreadRows();
    DriveClock clock;
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows[i].time >= 0)
            clock.at(m_rows[i].time);
        const int end = i + 1 < m_rows.size() ? m_rows[i + 1].firstSample : m_log.samples.size();
        for (int sample = m_rows[i].firstSample; sample < end; ++sample)
            m_log.samples[sample].atMs = clock.nowMs();
    }
    m_log.title = QFileInfo(path).fileName();
    m_log.durationMs = clock.nowMs();
    m_log.badLines = badLines;
    m_log.details = {
        {"kind", "csv"}, {"rows", m_rows.size()}, {"irregularSteps", clock.irregularSteps()}};
    markMissingValues(&m_log);
    return m_log;
}

static std::optional<CsvReader> findHeader(LineReader *lines, const QString &path, QString *error)
{
    QByteArray line;
    QString first;
    while (lines->lineNumber() < longestPreamble && lines->next(&line)) {
        CsvReader reader(csvText(line));
        if (reader.isHeader())
            return reader;
        if (lines->lineNumber() == 1)
            first = lines->wasTooLong()
                        ? QStringLiteral("a line longer than %1 bytes").arg(LineReader::LongestLine)
                        : QStringLiteral("'%1'").arg(excerpt(line));
    }
    *error = QStringLiteral("%1: line 1: expected an OBD-II header row (such as 'Engine RPM'), a "
                            "candump log or a recording, found %2")
                 .arg(path, first.isEmpty() ? QStringLiteral("an empty file") : first);
    return std::nullopt;
}

std::optional<SampleLog> readObdCsv(const QString &path, QString *error)
{
    LineReader lines(path, error);
    if (!lines.isOpen())
        return std::nullopt;
    auto reader = findHeader(&lines, path, error);
    if (!reader)
        return std::nullopt;

    QByteArray line;
    int badLines = 0;
    while (lines.next(&line)) {
        if (line.trimmed().isEmpty() && !lines.wasTooLong())
            continue;
        badLines += lines.wasTooLong() || !reader->readRow(line, lines.wasCutOff());
    }
    const int lastLine = lines.lineNumber();
    SampleLog log = reader->take(path, badLines);
    if (log.samples.isEmpty()) {
        *error = QStringLiteral("%1: line %2: expected rows of values below the header, found none")
                     .arg(path, QString::number(lastLine));
        return std::nullopt;
    }
    return log;
}

} // namespace module
