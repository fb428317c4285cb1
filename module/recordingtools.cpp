#include "recordingtools.h"

#include "adaptorlink.h"
#include "linereader.h"
#include "recording.h"
#include "snapshot.h"
#include "values.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QSaveFile>

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
    /** The time of the last line, also at the end. */
    double ms() const { return m_ms; }

    /** Of the signal or the call; empty for the end line. */
    QString name() const
    {
        return m_line.value(m_line.contains("call") ? "call" : "signal").toString();
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
        const bool isKnown =
            m_line.contains("signal") || m_line.contains("call") || m_line.contains("end");
        if (m_line.value("t").isDouble() && isKnown) {
            m_ms = m_line.value("t").toDouble();
            return true;
        }
        *error = QStringLiteral("%1: line %2: expected a signal, a call or the end, found '%3'")
                     .arg(m_path)
                     .arg(lineNumber())
                     .arg(excerpt(text));
        return false;
    }

    /** The current line, or the end, for a person. */
    QString description() const
    {
        if (isAtEnd())
            return QStringLiteral("%1: ends after line %2").arg(m_path).arg(lineNumber());
        const QByteArray text = QJsonDocument(m_line).toJson(QJsonDocument::Compact);
        return QStringLiteral("%1: line %2: %3")
            .arg(m_path)
            .arg(lineNumber())
            .arg(QString::fromUtf8(text));
    }

private:
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
        m_areIdentical = m_first.line() == m_second.line();
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
                lines.append(QStringLiteral("%1: %2 times and %3 times")
                                 .arg(it.key())
                                 .arg(inFirst)
                                 .arg(inSecond));
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

static QString seconds(qint64 ms)
{
    return QString::number(double(ms) / 1000, 'g', 10);
}

static void writeLine(QIODevice *out, QJsonObject line, double ms)
{
    line.insert("t", ms);
    out->write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
}

/** Goes to the first line of a part. @return the snapshot before it, as lines */
static Snapshot<QJsonObject> skipUntil(double ms, RecordedLines *lines, QString *error)
{
    Snapshot<QJsonObject> state;
    while (lines->next(error) && lines->ms() < ms) {
        if (lines->line().contains("signal"))
            state.add(lines->name().toLatin1(), lines->arguments(), lines->line());
    }
    return state;
}

/** Writes the lines of a part from the current one on. */
static void writeLines(QIODevice *out, RecordedLines *lines, qint64 fromMs, qint64 toMs,
                       QString *error)
{
    do {
        if (!lines->line().contains("end"))
            writeLine(out, lines->line(), lines->ms() - double(fromMs));
    } while (lines->next(error) && lines->ms() <= double(toMs));
    writeLine(out, {{"end", true}}, double(qMin(toMs, qint64(lines->ms())) - fromMs));
}

static bool writePart(QIODevice *out, const QString &file, qint64 fromMs, qint64 toMs,
                      QString *error)
{
    RecordedLines lines(file, error);
    if (!lines.isOpen())
        return false;
    const Snapshot<QJsonObject> state = skipUntil(double(fromMs), &lines, error);
    if (!error->isEmpty())
        return false;
    if (lines.isAtEnd() || lines.ms() > double(toMs)) {
        *error = QStringLiteral("%1: expected signals or calls from %2 s to %3 s, found none")
                     .arg(file, seconds(fromMs), seconds(toMs));
        return false;
    }
    out->write(recordingHeader(QStringLiteral("part of %1").arg(file)));
    const QVector<QJsonObject> before = state.items();
    for (const QJsonObject &line : before)
        writeLine(out, line, 0);
    writeLines(out, &lines, fromMs, toMs, error);
    return error->isEmpty();
}

static QString unwritable(const QSaveFile &file)
{
    return QStringLiteral("%1: expected a file that can be written: %2")
        .arg(file.fileName(), file.errorString());
}

bool cutRecording(const QString &file, qint64 fromMs, qint64 toMs, const QString &part,
                  QString *error)
{
    QSaveFile out(part); // may be the recording itself
    if (!out.open(QIODevice::WriteOnly)) {
        *error = unwritable(out);
        return false;
    }
    if (!writePart(&out, file, fromMs, toMs, error))
        return false;
    if (out.commit())
        return true;
    *error = unwritable(out);
    return false;
}

} // namespace module
