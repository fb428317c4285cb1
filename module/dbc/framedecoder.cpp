#include "framedecoder.h"

#include "silence.h"

#include <algorithm>
#include <cmath>

namespace module {

// ---- Planning -----------------------------------------------------------------------------------

FrameDecoder::FrameDecoder(const SignalMap &map, const Dbc &dbc)
    : FrameDecoder(map, dbc, bindSignals(map, dbc))
{
}

FrameDecoder::FrameDecoder(const SignalMap &map, const Dbc &dbc, const SignalBinding &binding)
    : m_entries(map.entries()), m_states(size_t(map.entries().size()))
{
    const auto end = binding.links.cend();
    for (auto first = binding.links.cbegin(); first != end;) {
        const auto next = std::find_if(first, end, [first](const SignalLink &link) {
            return link.place.message != first->place.message;
        });
        addMessage(dbc.messages().at(first->place.message), first, next);
        first = next;
    }
}

void FrameDecoder::addMessage(const DbcMessage &message, const SignalLink *first,
                              const SignalLink *end)
{
    QVector<int> wanted;
    QVector<int> firstChannel;
    QVector<Channel> channels;
    for (const SignalLink *link = first; link != end; ++link) {
        const int signal = link->place.signal;
        if (wanted.isEmpty() || wanted.constLast() != signal) {
            wanted.append(signal);
            firstChannel.append(channels.size());
        }
        const DbcSignal &field = message.fields.at(signal);
        channels.append(
            {link->entry, field.values, rowsFor(m_entries.at(link->entry).transform, field)});
    }
    firstChannel.append(channels.size());
    m_byId.insert(message.id, int(m_messages.size()));
    m_messages.push_back({FramePlan(message, wanted), channels, firstChannel});
    m_decoded.resize(std::max(m_decoded.size(), size_t(wanted.size())));
}

/** A name that no value of the signal has is left out; the binding remarks on it. */
QVector<FrameDecoder::Row> FrameDecoder::rowsFor(const SignalTransform &transform,
                                                 const DbcSignal &field)
{
    QVector<Row> rows;
    for (const MappedValue &mapped : transform.mapping) {
        if (mapped.from.type() != QVariant::String) {
            rows.append({false, 0, mapped.from.toDouble(), mapped.to});
            continue;
        }
        const QString name = mapped.from.toString();
        for (const DbcValue &value : field.values) {
            if (value.name == name)
                rows.append({true, value.raw, 0, mapped.to});
        }
    }
    return rows;
}

// ---- Decoding -----------------------------------------------------------------------------------

const QVector<PathValue> &FrameDecoder::decode(qint64 ms, quint32 id, const quint8 *data, int size)
{
    m_values.resize(0); // keeps its room
    const int found = m_byId.find(id);
    if (found < 0)
        return m_values;
    const Message &message = m_messages[size_t(found)];
    const int count = message.plan.decode(data, size, m_decoded.data());
    for (int i = 0; i < count; ++i) {
        const DecodedSignal &decoded = m_decoded[size_t(i)];
        const int end = message.firstChannel.at(decoded.signal() + 1);
        for (int channel = message.firstChannel.at(decoded.signal()); channel < end; ++channel)
            offer(ms, message.channels.at(channel), decoded);
    }
    return m_values;
}

void FrameDecoder::reset()
{
    std::fill(m_states.begin(), m_states.end(), State());
}

void FrameDecoder::State::note(qint64 nowMs)
{
    firstMs = count == 0 ? nowMs : firstMs;
    lastMs = nowMs;
    ++count;
}

qint64 FrameDecoder::State::expectedMs(int intervalMs) const
{
    if (!isSet || intervalMs <= 0)
        return never;
    const qint64 usualMs = count > 1 ? (lastMs - firstMs) / (count - 1) : 0;
    return lastMs + longestSilenceMs(std::max(qint64(intervalMs), usualMs));
}

qint64 FrameDecoder::nextExpectedMs() const
{
    qint64 next = never;
    for (int entry = 0; entry < m_entries.size(); ++entry)
        next = std::min(next, m_states[size_t(entry)].expectedMs(m_entries.at(entry).intervalMs));
    return next;
}

const QVector<PathValue> &FrameDecoder::missing(qint64 ms)
{
    m_values.resize(0);
    for (int entry = 0; entry < m_entries.size(); ++entry) {
        State &state = m_states[size_t(entry)];
        if (ms <= state.expectedMs(m_entries.at(entry).intervalMs))
            continue;
        state = State();
        m_values.append({entry, QVariant(), QString()});
    }
    return m_values;
}

/** Takes a value where its time has come. One that comes too early is not kept for later. */
void FrameDecoder::offer(qint64 ms, const Channel &channel, const DecodedSignal &decoded)
{
    const MapEntry &entry = m_entries.at(channel.entry);
    State &last = m_states[size_t(channel.entry)];
    if (last.isSet && ms - last.ms < entry.intervalMs)
        return;
    PathValue offered = valueOf(channel, decoded);
    if (!offered.value.isValid())
        return;
    last.note(ms);
    if (last.isSet && entry.onChange && offered.value == last.value)
        return;
    last.isSet = true;
    last.ms = ms;
    last.value = offered.value;
    m_values.append(std::move(offered));
}

PathValue FrameDecoder::valueOf(const Channel &channel, const DecodedSignal &decoded) const
{
    const SignalTransform &transform = m_entries.at(channel.entry).transform;
    if (!transform.mapping.isEmpty())
        return {channel.entry, mapped(channel.rows, decoded), QString()};
    const QString name = valueName(channel.values, decoded.raw());
    const double value = decoded.value();
    if (!transform.math) // floating point has bits that are no number
        return {channel.entry, std::isfinite(value) ? QVariant(value) : QVariant(), name};
    const auto result = name.isEmpty() ? transform.math->evaluate(value) : std::nullopt;
    return {channel.entry, result ? QVariant(*result) : QVariant(), QString()};
}

QVariant FrameDecoder::mapped(const QVector<Row> &rows, const DecodedSignal &decoded)
{
    const auto row = std::find_if(rows.cbegin(), rows.cend(), [&decoded](const Row &candidate) {
        return candidate.isRaw ? candidate.raw == decoded.raw()
                               : candidate.number == decoded.value();
    });
    return row == rows.cend() ? QVariant() : row->to;
}

} // namespace module
