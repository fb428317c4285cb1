#include "recordingtools.h"

#include "adaptorlink.h"
#include "lastsaid.h"
#include "linereader.h"
#include "recording.h"
#include "values.h"
#include "vehiclesource.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QSaveFile>

#include <array>

namespace module {

/** The lines of a recording behind its header, each checked for what every line has. */
class RecordedLines
{
public:
    RecordedLines(const QString &path, QString *error) : m_path(path), m_lines(path, error)
    {
        m_isOpen = m_lines.isOpen() && readRecordingHeader(&m_lines, path, error);
    }

    bool isOpen() const { return m_isOpen; }
    int lineNumber() const { return m_lines.lineNumber(); }
    const QJsonObject &line() const { return m_line; }
    double ms() const { return m_line.value("t").toDouble(); }
    bool is(const char *kind) const { return m_line.contains(QLatin1String(kind)); }
    QString name() const
    {
        for (const char *kind : {"signal", "call", "action"}) {
            if (is(kind))
                return m_line.value(QLatin1String(kind)).toString();
        }
        return {};
    }
    /** What of it must be alike: a call comes when the machine has got to it. */
    QJsonObject essence() const
    {
        QJsonObject line = m_line;
        if (is("call"))
            line.remove("t");
        return line;
    }
    /** Of a signal, as it takes them; as they stand where it does not exist or takes others. */
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
        do {
            if (!m_lines.next(&text))
                return false;
        } while (text.trimmed().isEmpty() && !m_lines.wasTooLong());
        m_line = QJsonDocument::fromJson(text).object();
        const bool isKnown = is("signal") || is("call") || is("action") || is("end");
        if (m_line.value("t").isDouble() && isKnown)
            return true;
        *error = QStringLiteral(
                     "%1: line %2: expected a signal, a call, an action or the end, found '%3'")
                     .arg(m_path)
                     .arg(lineNumber())
                     .arg(excerpt(text));
        return false;
    }

private:
    QString m_path;
    LineReader m_lines;
    QJsonObject m_line;
    bool m_isOpen = false;
};

static QString inWords(const QString &path, const RecordedLines &lines, bool hasLine)
{
    if (!hasLine)
        return QStringLiteral("%1: ends after line %2").arg(path).arg(lines.lineNumber());
    const QByteArray text = QJsonDocument(lines.line()).toJson(QJsonDocument::Compact);
    return QStringLiteral("%1: line %2: %3")
        .arg(path)
        .arg(lines.lineNumber())
        .arg(QString::fromUtf8(text));
}

Comparison compareRecordings(const QString &first, const QString &second, QStringList *report,
                             QString *error)
{
    RecordedLines a(first, error);
    if (!a.isOpen())
        return Comparison::Unusable;
    RecordedLines b(second, error);
    if (!b.isOpen())
        return Comparison::Unusable;

    QMap<QString, std::array<int, 2>> counts;
    bool areAlike = true;
    int alikeLines = 0;
    double alikeMs = 0;
    for (;;) {
        const bool hasA = a.next(error);
        const bool hasB = error->isEmpty() && b.next(error);
        if (!error->isEmpty())
            return Comparison::Unusable;
        if (!hasA && !hasB)
            break;
        if (hasA && !a.name().isEmpty())
            ++counts[a.name()][0];
        if (hasB && !b.name().isEmpty())
            ++counts[b.name()][1];
        if (!areAlike)
            continue;
        areAlike = hasA && hasB && a.essence() == b.essence();
        if (areAlike) {
            ++alikeLines;
            alikeMs = a.ms();
            continue;
        }
        report->append(QStringLiteral("alike for %1 lines, until %2 s; then")
                           .arg(alikeLines)
                           .arg(alikeMs / 1000, 0, 'f', 3));
        report->append(inWords(first, a, hasA));
        report->append(inWords(second, b, hasB));
    }
    if (areAlike) {
        report->append(
            QStringLiteral("alike: %1 lines, %2 s").arg(alikeLines).arg(alikeMs / 1000, 0, 'f', 3));
        return Comparison::Alike;
    }
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        const auto [inFirst, inSecond] = *it;
        if (inFirst != inSecond)
            report->append(QStringLiteral("%1: %2 times and %3 times")
                               .arg(it.key())
                               .arg(inFirst)
                               .arg(inSecond));
    }
    return Comparison::Different;
}

/** Writes what a part holds, after what brings the unit to the moment that it begins at. */
class PartWriter
{
public:
    explicit PartWriter(QIODevice *out) : m_out(out) {}

    void write(QJsonObject line, double ms)
    {
        line.insert("t", ms);
        m_out->write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
    }

    /** What an action did depends on what had been said before it, so both are kept in order. */
    void passOver(const RecordedLines &lines)
    {
        m_hasPast = true;
        if (lines.is("signal"))
            m_said.say(lines.name().toLatin1(), lines.arguments(), lines.line());
        if (!lines.is("action") || lines.name() == QLatin1String(beginAction))
            return;
        writeSaid();
        write(lines.line(), 0);
    }

    void begin()
    {
        writeSaid();
        if (m_hasPast)
            write({{"action", QLatin1String(beginAction)}, {"args", QJsonArray()}}, 0);
    }

private:
    void writeSaid()
    {
        const QVector<QJsonObject> said = m_said.inOrder();
        for (const QJsonObject &line : said)
            write(line, 0);
        m_said.clear();
    }

    QIODevice *m_out;
    LastSaid<QJsonObject> m_said;
    bool m_hasPast = false;
};

bool cutRecording(const QString &file, qint64 fromMs, qint64 toMs, const QString &part,
                  QString *error)
{
    RecordedLines lines(file, error);
    if (!lines.isOpen())
        return false;
    QSaveFile out(part); // may be the recording itself
    if (!out.open(QIODevice::WriteOnly)) {
        *error = QStringLiteral("%1: expected a file that can be written: %2")
                     .arg(part, out.errorString());
        return false;
    }
    out.write(recordingHeader(QStringLiteral("part of %1").arg(file)));
    PartWriter writer(&out);
    bool isWithin = false;
    double lastMs = 0;
    while (lines.next(error)) {
        lastMs = lines.ms();
        if (lastMs > double(toMs))
            break;
        if (lastMs < double(fromMs)) {
            writer.passOver(lines);
            continue;
        }
        if (!isWithin)
            writer.begin();
        isWithin = true;
        if (!lines.is("end"))
            writer.write(lines.line(), lastMs - double(fromMs));
    }
    if (!error->isEmpty())
        return false;
    if (!isWithin) {
        *error = QStringLiteral("%1: expected a part of its %2 s, from %3 s on there is nothing")
                     .arg(file)
                     .arg(lastMs / 1000)
                     .arg(double(fromMs) / 1000);
        return false;
    }
    writer.write({{"end", true}}, double(qMin(toMs, qint64(lastMs)) - fromMs));
    if (out.commit())
        return true;
    *error = QStringLiteral("%1: %2").arg(part, out.errorString());
    return false;
}

} // namespace module
