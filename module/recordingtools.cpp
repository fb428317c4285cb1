#include "recordingtools.h"

#include "adaptorlink.h"
#include "linereader.h"
#include "outputfile.h"
#include "recording.h"
#include "snapshot.h"
#include "values.h"
#include "vehiclesource.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>

#include <array>

namespace module {

/** The lines of a recording after its header, each checked for what every line has. */
class RecordedLines
{
public:
    RecordedLines(const QString &path, QString *error) : m_path(path), m_lines(path, error)
    {
        m_isOpen = m_lines.isOpen() && readRecordingHeader(&m_lines, path, error);
    }

    bool isOpen() const { return m_isOpen; }
    bool isAtEnd() const { return m_line.isEmpty(); }
    int lineNumber() const { return m_lines.lineNumber(); }
    const QJsonObject &line() const { return m_line; }
    bool is(const char *kind) const { return m_line.contains(QLatin1String(kind)); }
    /** The time of the last line, also at the end. */
    double ms() const { return m_ms; }

    /** Of the signal, the call or the action; empty for the end line. */
    QString name() const
    {
        for (const char *kind : {"signal", "call", "action"}) {
            if (is(kind))
                return m_line.value(QLatin1String(kind)).toString();
        }
        return {};
    }

    /** What has to be identical: the time of a call depends on the machine. */
    QJsonObject essence() const
    {
        QJsonObject line = m_line;
        if (is("call"))
            line.remove("t");
        return line;
    }

    /** Converted to what the signal takes; unchanged where that is impossible. */
    QVariantList arguments() const
    {
        QString ignored;
        QVariantList arguments = m_line.value("args").toArray().toVariantList();
        bindArguments(moduleSignal(name().toLatin1()).method, &arguments, &ignored);
        return arguments;
    }

    /** @return false at the end, and after an error */
    bool next(QString *error)
    {
        QByteArray text;
        m_line = {};
        do {
            if (!m_lines.next(&text))
                return false;
        } while (text.trimmed().isEmpty() && !m_lines.wasTooLong());
        m_line = QJsonDocument::fromJson(text).object();
        if (isKnown())
            return checkTime(error);
        m_line = {};
        if (m_lines.wasCutOff()) // the recording was interrupted here
            return false;
        *error = QStringLiteral(
                     "%1: line %2: expected a signal, a call, an action or the end, found '%3'")
                     .arg(m_path, QString::number(lineNumber()), excerpt(text));
        return false;
    }

    /** The current line, or the end, for a person. */
    QString description() const
    {
        if (isAtEnd())
            return QStringLiteral("%1: ends after line %2")
                .arg(m_path, QString::number(lineNumber()));
        const QByteArray text = QJsonDocument(m_line).toJson(QJsonDocument::Compact);
        return QStringLiteral("%1: line %2: %3")
            .arg(m_path, QString::number(lineNumber()), QString::fromUtf8(text));
    }

private:
    bool isKnown() const
    {
        return m_line.value("t").isDouble() &&
               (is("signal") || is("call") || is("action") || is("end"));
    }

    bool checkTime(QString *error)
    {
        const double ms = m_line.value("t").toDouble();
        if (ms >= m_ms && ms <= longestDriveMs) {
            m_ms = ms;
            return true;
        }
        *error = QStringLiteral("%1: line %2: expected a time from %3 ms to %4 ms, found %5")
                     .arg(m_path, QString::number(lineNumber()), number(m_ms),
                          number(longestDriveMs), number(ms));
        m_line = {};
        return false;
    }

    static QString number(double ms) { return QString::number(ms, 'g', 15); }

    QString m_path;
    LineReader m_lines;
    QJsonObject m_line;
    double m_ms = 0;
    bool m_isOpen = false;
};

/** Reads two recordings side by side. */
class RecordingComparison
{
public:
    RecordingComparison(RecordedLines *first, RecordedLines *second, QString *error)
        : m_first(*first), m_second(*second), m_error(error)
    {
    }

    Comparison run(QStringList *report)
    {
        while (next())
            compareLine(report);
        if (!m_error->isEmpty())
            return Comparison::Unusable;
        if (m_areIdentical)
            report->append(QStringLiteral("identical: %1 lines, %2 s").arg(m_lines).arg(seconds()));
        else
            *report += differentCounts();
        return m_areIdentical ? Comparison::Identical : Comparison::Different;
    }

private:
    bool next()
    {
        const bool hasFirst = m_first.next(m_error);
        const bool hasSecond = m_error->isEmpty() && m_second.next(m_error);
        return m_error->isEmpty() && (hasFirst || hasSecond);
    }

    void compareLine(QStringList *report)
    {
        ++m_counts[m_first.name()][0];
        ++m_counts[m_second.name()][1];
        if (!m_areIdentical)
            return;
        m_areIdentical = m_first.essence() == m_second.essence();
        if (m_areIdentical) {
            ++m_lines;
            m_lastLine = m_first.lineNumber();
            m_lastMs = m_first.ms();
            return;
        }
        report->append(QStringLiteral("identical up to line %1 (%2 s), first difference:")
                           .arg(m_lastLine)
                           .arg(seconds()));
        report->append({m_first.description(), m_second.description()});
    }

    QStringList differentCounts() const
    {
        QStringList lines;
        for (auto it = m_counts.cbegin(); it != m_counts.cend(); ++it) {
            const auto [inFirst, inSecond] = *it;
            if (inFirst != inSecond && !it.key().isEmpty())
                lines.append(
                    QStringLiteral("%1: %2 times and %3 times")
                        .arg(it.key(), QString::number(inFirst), QString::number(inSecond)));
        }
        return lines;
    }

    /** How far they are identical. */
    QString seconds() const { return QString::number(m_lastMs / 1000, 'f', 3); }

    RecordedLines &m_first;
    RecordedLines &m_second;
    QString *m_error;
    QMap<QString, std::array<int, 2>> m_counts; // by name
    bool m_areIdentical = true;
    int m_lines = 0;
    int m_lastLine = 1; // the header
    double m_lastMs = 0;
};

Comparison compareRecordings(const QString &first, const QString &second, QStringList *report,
                             QString *error)
{
    RecordedLines a(first, error);
    if (!a.isOpen())
        return Comparison::Unusable;
    RecordedLines b(second, error);
    if (!b.isOpen())
        return Comparison::Unusable;
    return RecordingComparison(&a, &b, error).run(report);
}

static QString exactSeconds(qint64 ms)
{
    return QString::number(double(ms) / 1000, 'g', 10);
}

/** Writes a part, after what brings the unit to the moment where it begins. */
class PartWriter
{
public:
    explicit PartWriter(output::OutputFile *out) : m_out(out) {}

    /** The effect of an action depends on the state before it, so both are kept in order. */
    void skip(const RecordedLines &lines)
    {
        m_hasPast = true;
        if (lines.is("signal"))
            m_state.add(lines.name().toLatin1(), lines.arguments(), lines.line());
        if (!lines.is("action") || lines.name() == QLatin1String(beginAction))
            return;
        writeState();
        write(lines.line(), 0);
    }

    /** Writes the lines from the current one on. */
    void copy(RecordedLines *lines, qint64 fromMs, qint64 toMs, QString *error)
    {
        writeState();
        if (m_hasPast)
            write({{"action", QLatin1String(beginAction)}, {"args", QJsonArray()}}, 0);
        do {
            if (!lines->is("end"))
                write(lines->line(), lines->ms() - double(fromMs));
        } while (lines->next(error) && lines->ms() <= double(toMs));
        write({{"end", true}}, double(qMin(toMs, qint64(lines->ms())) - fromMs));
    }

private:
    void write(QJsonObject line, double ms)
    {
        line.insert("t", ms);
        m_out->write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
    }

    void writeState()
    {
        const QVector<QJsonObject> state = m_state.items();
        for (const QJsonObject &line : state)
            write(line, 0);
        m_state.clear();
    }

    output::OutputFile *m_out;
    Snapshot<QJsonObject> m_state;
    bool m_hasPast = false;
};

static bool writePart(output::OutputFile *out, const QString &file, qint64 fromMs, qint64 toMs,
                      QString *error)
{
    RecordedLines lines(file, error);
    if (!lines.isOpen())
        return false;
    out->write(recordingHeader(QStringLiteral("part of %1").arg(file)));
    PartWriter writer(out);
    while (lines.next(error) && lines.ms() < double(fromMs))
        writer.skip(lines);
    if (!error->isEmpty())
        return false;
    if (lines.isAtEnd() || lines.ms() > double(toMs)) {
        *error = QStringLiteral("%1: expected signals or calls from %2 s to %3 s, found none")
                     .arg(file, exactSeconds(fromMs), exactSeconds(toMs));
        return false;
    }
    writer.copy(&lines, fromMs, toMs, error);
    return error->isEmpty();
}

bool cutRecording(const QString &file, qint64 fromMs, qint64 toMs, const QString &part,
                  QString *error)
{
    output::ResultFile out(part); // may be the recording itself
    if (out.isOpen() && !writePart(&out, file, fromMs, toMs, error))
        return false;
    out.commit();
    *error = out.error();
    return error->isEmpty();
}

} // namespace module
