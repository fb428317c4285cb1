#include "recording.h"

#include "adaptorlink.h"
#include "linereader.h"
#include "values.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace module {

static const QString formatName = QStringLiteral("norda-recording");
static constexpr int formatVersion = 1;

RecordingWriter::RecordingWriter(const QString &path, const QString &title, QString *error)
    : m_file(path)
{
    if (!m_file.open(QIODevice::WriteOnly)) {
        *error = QStringLiteral("%1: expected a file that can be written: %2")
                     .arg(path, m_file.errorString());
        return;
    }
    m_title = title;
    begin(title);
}

RecordingWriter::~RecordingWriter() = default;

void RecordingWriter::begin(const QString &title)
{
    m_file.write(recordingHeader(title));
}

void RecordingWriter::write(qint64 ms, QJsonObject line)
{
    line.insert(QStringLiteral("t"), double(ms - m_beginMs));
    const QByteArray text = QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n';
    if (m_file.write(text) == text.size() || m_isBroken)
        return;
    m_isBroken = true;
    m_notice = QStringLiteral("%1: expected room for the recording: %2")
                   .arg(m_file.fileName(), m_file.errorString());
}

static QJsonObject signalLine(const QByteArray &name, const QVariantList &arguments)
{
    return {{"signal", QString::fromLatin1(name)}, {"args", toJson(arguments)}};
}

void RecordingWriter::writeSignal(qint64 ms, const QByteArray &name, const QVariantList &arguments)
{
    if (m_limit > 0 && m_file.pos() >= m_limit / 2)
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

/** "report.jsonl" continues after "report.1.jsonl". */
static QString previousPart(const QString &path)
{
    const QFileInfo info(path);
    return info.dir().filePath(
        QStringLiteral("%1.1.%2").arg(info.completeBaseName(), info.suffix()));
}

void RecordingWriter::beginNextPart(qint64 ms)
{
    const QString path = m_file.fileName();
    const QString previous = previousPart(path);
    const QString seconds = QString::number(double(ms) / 1000, 'f', 1);
    finish(ms);
    QFile::remove(previous);
    const bool isKept = QFile::rename(path, previous);
    if (!m_file.open(QIODevice::WriteOnly)) {
        m_notice = QStringLiteral("%1: expected a file that can be written: %2")
                       .arg(path, m_file.errorString());
        return;
    }
    m_notice = QStringLiteral("%1: half of the limit was reached at %2 s; the previous part is %3, "
                              "older parts are deleted")
                   .arg(path, seconds, isKept ? previous : QStringLiteral("lost"));
    begin(QStringLiteral("%1, from %2 s").arg(m_title, seconds));
    m_beginMs = ms;
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
    m_file.close();
}

bool isRecordingHeader(const QByteArray &line)
{
    return QJsonDocument::fromJson(line).object().value("format").toString() == formatName;
}

QByteArray recordingHeader(const QString &title)
{
    const QJsonObject header{{"format", formatName}, {"version", formatVersion}, {"title", title}};
    return QJsonDocument(header).toJson(QJsonDocument::Compact) + '\n';
}

bool readRecordingHeader(LineReader *lines, const QString &path, QString *error)
{
    QByteArray line;
    lines->next(&line);
    const QJsonObject header = QJsonDocument::fromJson(line).object();
    if (header.value("format").toString() != formatName) {
        *error = QStringLiteral("%1: line 1: expected the header of a recording, found '%2'")
                     .arg(path, excerpt(line));
        return false;
    }
    if (header.value("version").toInt() == formatVersion)
        return true;
    *error = QStringLiteral("%1: line 1: expected a recording of version %2, found version %3")
                 .arg(path)
                 .arg(formatVersion)
                 .arg(header.value("version").toInt());
    return false;
}

std::unique_ptr<RecordingSource> RecordingSource::open(const QString &path, QString *error)
{
    LineReader lines(path, error);
    if (!lines.isOpen() || !readRecordingHeader(&lines, path, error))
        return nullptr;
    QByteArray line;
    auto source = std::make_unique<RecordingSource>();
    source->m_title = QFileInfo(path).fileName();
    while (lines.next(&line)) {
        if (!line.trimmed().isEmpty() || lines.wasTooLong())
            source->read(QJsonDocument::fromJson(line).object());
    }
    return source;
}

void RecordingSource::read(const QJsonObject &line)
{
    const double moment = line.value("t").toDouble(-1);
    bool isGood = moment >= double(m_durationMs) && moment <= longestDriveMs;
    if (isGood && line.contains("signal"))
        isGood = readSignal(qint64(moment), line);
    else if (isGood && line.contains("action"))
        readAction(qint64(moment), line);
    else if (isGood && line.contains("call"))
        ++m_calls;
    else
        isGood = isGood && line.contains("end");
    if (isGood)
        m_durationMs = qint64(moment);
    else
        ++m_badLines;
}

bool RecordingSource::readSignal(qint64 ms, const QJsonObject &line)
{
    const QByteArray name = line.value("signal").toString().toLatin1();
    const QMetaMethod signal = moduleSignal(name).method;
    const QJsonArray values = line.value("args").toArray();
    if (!signal.isValid() || values.size() != signal.parameterCount())
        return false;
    Emission emission{ms, name, {}};
    for (int i = 0; i < values.size(); ++i) {
        emission.arguments.append(fromJson(values[i], signal.parameterType(i)));
        if (!emission.arguments.last().isValid())
            return false;
    }
    emission.signal = *m_names.insert(name); // one copy of each name
    m_signals += keep(emission);
    return true;
}

void RecordingSource::readAction(qint64 ms, const QJsonObject &line)
{
    const QByteArray word = line.value("action").toString().toLatin1();
    keep({ms, word, line.value("args").toArray().toVariantList(), true});
    if (word == beginAction)
        m_begin = m_emissions.size();
}

bool RecordingSource::keep(const Emission &emission)
{
    const bool hasRoom = m_emissions.size() < mostRecordedSignals;
    if (hasRoom)
        m_emissions.append(emission);
    else
        ++m_notKept;
    return hasRoom;
}

bool RecordingSource::opensPages() const
{
    return !m_emissions.isEmpty() && m_emissions.constFirst().isAction;
}

qint64 RecordingSource::nextDueMs() const
{
    if (!m_state.isEmpty())
        return m_state.constFirst().atMs;
    return m_index < m_emissions.size() ? m_emissions[m_index].atMs : -1;
}

Emission RecordingSource::take()
{
    return m_state.isEmpty() ? m_emissions[m_index++] : m_state.takeFirst();
}

QVector<int> RecordingSource::stateBefore(int end) const
{
    const auto partAt = [this](int i) {
        const Emission &emission = m_emissions[i];
        return emission.isAction ? noPart : statePart(emission.signal, emission.arguments);
    };
    return snapshotOfLog(
        end, m_names.size(), [this](int i) { return m_emissions[i].signal; }, partAt);
}

void RecordingSource::seek(qint64 ms)
{
    const auto next = std::lower_bound(
        m_emissions.cbegin(), m_emissions.cend(), ms,
        [](const Emission &emission, qint64 moment) { return emission.atMs < moment; });
    m_index = int(next - m_emissions.cbegin());
    m_state.clear();
    for (const int index : stateBefore(m_index)) {
        m_state.append(m_emissions[index]);
        m_state.last().atMs = ms;
    }
}

QStringList RecordingSource::findings() const
{
    QStringList lines = {
        QStringLiteral("%1 signals and %2 calls recorded").arg(m_signals).arg(m_calls)};
    if (m_notKept > 0)
        lines.append(QStringLiteral("%1 signals were not kept: the limit is %2")
                         .arg(m_notKept)
                         .arg(mostRecordedSignals));
    if (m_badLines > 0)
        lines.append(QStringLiteral("%1 lines could not be read").arg(m_badLines));
    return lines;
}

QJsonObject RecordingSource::statistics() const
{
    return {{"kind", "recording"},  {"driveSeconds", double(m_durationMs) / 1000.0},
            {"signals", m_signals}, {"calls", m_calls},
            {"notKept", m_notKept}, {"badLines", m_badLines}};
}

} // namespace module
