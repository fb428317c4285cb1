#include "recording.h"

#include "adaptorlink.h"
#include "linereader.h"
#include "timeorder.h"
#include "values.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace module {

static const QString formatName = QStringLiteral("norda-recording");
static constexpr int formatVersion = 1;

bool isRecordingHeader(const QByteArray &line)
{
    return QJsonDocument::fromJson(line).object().value("format").toString() == formatName;
}

bool isRecordingLine(const QByteArray &line)
{
    const QJsonObject object = QJsonDocument::fromJson(line).object();
    return object.value("t").isDouble() && (object.contains("signal") || object.contains("call") ||
                                            object.contains("action") || object.contains("end"));
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
    QVector<Moment> moments;
    while (lines.next(&line)) {
        if (!line.trimmed().isEmpty() || lines.wasTooLong())
            source->read(QJsonDocument::fromJson(line).object(), &moments);
    }
    source->accept(moments);
    return source;
}

void RecordingSource::read(const QJsonObject &line, QVector<Moment> *moments)
{
    const double time = line.value("t").toDouble(-1);
    const bool isTime = time >= 0 && time <= longestDriveMs;
    Moment moment{isTime ? qint64(time) : 0, line.contains("call"), m_emissions.size()};
    if (isTime && (readEmission(moment.ms, line) || moment.isCall || line.contains("end")))
        moments->append(moment);
    else
        ++m_badLines;
}

bool RecordingSource::readEmission(qint64 ms, const QJsonObject &line)
{
    if (line.contains("signal"))
        return readSignal(ms, line);
    if (!line.contains("action"))
        return false;
    const QByteArray word = line.value("action").toString().toLatin1();
    keep({ms, word, line.value("args").toArray().toVariantList(), true});
    return true;
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
    keep(emission);
    return true;
}

void RecordingSource::keep(const Emission &emission)
{
    if (m_emissions.size() < mostRecordedSignals)
        m_emissions.append(emission);
    else
        ++m_notKept;
}

/** Takes the lines that are in order; the times of the others are damaged. */
void RecordingSource::accept(const QVector<Moment> &moments)
{
    QVector<qint64> times;
    times.reserve(moments.size());
    for (const Moment &moment : moments)
        times.append(moment.ms);
    QVector<bool> isOut(times.size());
    if (!std::is_sorted(times.cbegin(), times.cend()))
        isOut = outOfOrder(times);

    QVector<Emission> emissions;
    emissions.swap(m_emissions);
    for (int i = 0; i < moments.size(); ++i) {
        const int next = i + 1 < moments.size() ? moments[i + 1].emission : emissions.size();
        if (isOut[i])
            ++m_badLines;
        else
            accept(moments[i], emissions.mid(moments[i].emission, next - moments[i].emission));
    }
}

/** @param emission  none for a call, the end, and what was not kept */
void RecordingSource::accept(const Moment &moment, const QVector<Emission> &emission)
{
    m_durationMs = moment.ms;
    m_calls += moment.isCall;
    m_emissions += emission;
    for (const Emission &each : emission) {
        m_signals += !each.isAction;
        if (each.isAction && each.signal == beginAction)
            m_begin = m_emissions.size();
    }
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
