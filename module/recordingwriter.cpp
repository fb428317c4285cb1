#include "recording.h"
#include "values.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace module {

/** "report.jsonl" continues after "report.1.jsonl", and "report" after "report.1". */
static QString previousPart(const QString &path)
{
    const QFileInfo info(path);
    const QString suffix = info.suffix();
    const QString name = info.completeBaseName() + QStringLiteral(".1");
    return info.dir().filePath(suffix.isEmpty() ? name : name + QLatin1Char('.') + suffix);
}

static QString seconds(qint64 ms)
{
    return QString::number(double(ms) / 1000, 'f', 1);
}

RecordingWriter::RecordingWriter(const QString &path, const QString &title, QString *error,
                                 const output::InputFiles &inputs)
    : m_path(path), m_title(title), m_inputs(inputs)
{
    *error = output::refusal(previousPart(path), inputs);
    if (!error->isEmpty())
        return;
    begin(title);
    *error = m_file->error();
}

RecordingWriter::~RecordingWriter() = default;

void RecordingWriter::begin(const QString &title)
{
    m_file = std::make_unique<output::GrowingFile>(m_path, recordingHeader(title), m_inputs);
}

/** Reports the first failure; nothing is written after it. */
void RecordingWriter::check(qint64 ms)
{
    if (m_hasFailed || m_file->error().isEmpty())
        return;
    m_hasFailed = true;
    m_notice = QStringLiteral("%1; the recording ends at %2 s").arg(m_file->error(), seconds(ms));
}

void RecordingWriter::write(qint64 ms, QJsonObject line)
{
    if (!isOpen())
        return;
    line.insert(QStringLiteral("t"), double(ms - m_beginMs));
    m_file->write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
    check(ms);
}

static QJsonObject signalLine(const QByteArray &name, const QVariantList &arguments)
{
    return {{"signal", QString::fromLatin1(name)}, {"args", toJson(arguments)}};
}

void RecordingWriter::writeSignal(qint64 ms, const QByteArray &name, const QVariantList &arguments)
{
    if (m_limit > 0 && isOpen() && m_file->size() >= m_limit / 2)
        beginNextPart(ms);
    if (m_limit > 0)
        m_state.add(name, arguments, {ms, name, arguments});
    write(ms, signalLine(name, arguments));
}

void RecordingWriter::writeCall(qint64 ms, const QString &operation, const QVariantList &arguments)
{
    write(ms, {{"call", operation}, {"args", toJson(arguments)}});
}

void RecordingWriter::writeAction(qint64 ms, const QString &word, const QVariantList &arguments)
{
    write(ms, {{"action", word}, {"args", QJsonArray::fromVariantList(arguments)}});
}

void RecordingWriter::beginNextPart(qint64 ms)
{
    const QString previous = previousPart(m_path);
    write(ms, {{"end", true}});
    if (m_file->rename(previous) && m_file->finish())
        begin(QStringLiteral("%1, from %2 s").arg(m_title, seconds(ms)));
    check(ms);
    if (m_hasFailed)
        return;
    m_notice = QStringLiteral("%1: half of the limit was reached at %2 s; the previous part is %3, "
                              "older parts are deleted")
                   .arg(m_path, seconds(ms), previous);
    m_beginMs = ms;
    writeCatchUp(ms);
}

void RecordingWriter::beginAt(qint64 ms, const QVector<Emission> &state)
{
    m_beginMs = ms;
    for (const Emission &emission : state)
        m_state.add(emission.signal, emission.arguments, emission);
    writeCatchUp(ms);
}

/** What brings the unit to the moment where a part begins. */
void RecordingWriter::writeCatchUp(qint64 ms)
{
    if (m_page >= 0)
        writeAction(ms, QStringLiteral("page"), {m_page});
    const QVector<Emission> state = m_state.items();
    for (const Emission &emission : state)
        write(ms, signalLine(emission.signal, emission.arguments));
    writeAction(ms, QLatin1String(beginAction), {});
}

QString RecordingWriter::takeNotice()
{
    QString notice;
    notice.swap(m_notice);
    return notice;
}

void RecordingWriter::finish(qint64 ms)
{
    write(ms, {{"end", true}});
    if (!isOpen())
        return;
    m_file->finish();
    check(ms);
}

} // namespace module
