#include "broadcast/broadcaster.h"

#include "broadcast/mapinverse.h"
#include "dbc/framebuilder.h"
#include "dbc/signalbinding.h"

#include <QMap>

namespace ecu {

using module::CanFrame;
using module::Dbc;
using module::DbcMessage;
using module::DbcSignal;
using module::longestFrame;
using module::Quantity;
using module::SignalMap;

Broadcaster::Broadcaster(const SignalMap &map, const Dbc &dbc)
    : m_entries(map.entries()), m_messages(dbc.messages())
{
    QMap<int, QVector<Field>> fields; // by message
    for (const module::SignalLink &link : module::bindSignals(map, dbc).links) {
        const Quantity quantity = module::quantityOf(m_entries[link.entry].path);
        if (quantity != Quantity::Count && m_messages[link.place.message].length <= longestFrame)
            fields[link.place.message].append({link.place.signal, link.entry, quantity});
    }
    for (auto it = fields.cbegin(); it != fields.cend(); ++it)
        addMessage(it.key(), it.value());
}

std::optional<Broadcaster> Broadcaster::open(const module::CarFiles &files, QString *error)
{
    const auto dbc = Dbc::read(files.dbc, error);
    const auto map = dbc ? SignalMap::read(files.map, error) : std::nullopt;
    if (!map)
        return std::nullopt;
    Broadcaster broadcaster(*map, *dbc);
    if (!broadcaster.m_broadcasts.isEmpty())
        return broadcaster;
    *error =
        QStringLiteral("%1: expected the path of a measured value with a signal of %2, found none")
            .arg(files.map, files.dbc);
    return std::nullopt;
}

/** The values of its multiplexors under which a signal is sent; empty for one that always is. */
static QVector<QPair<int, qint64>> selectionOf(const DbcMessage &message, int signal)
{
    QVector<QPair<int, qint64>> selection;
    for (const DbcSignal *field = &message.fields[signal]; field->multiplexor >= 0;
         field = &message.fields[field->multiplexor])
        selection.append({field->multiplexor, field->selectedBy.constFirst().from});
    return selection;
}

/** Twice as often as the map takes a value, so that none comes just too early. */
static int periodFor(const module::MapEntry &entry)
{
    return qBound(Broadcaster::ShortestPeriodMs, entry.intervalMs / 2,
                  Broadcaster::LongestPeriodMs);
}

/** Signals without a multiplexor are sent with each of the others. */
void Broadcaster::addMessage(int message, const QVector<Field> &fields)
{
    QMap<QVector<QPair<int, qint64>>, QVector<Field>> groups;
    int periodMs = LongestPeriodMs;
    for (const Field &field : fields) {
        groups[selectionOf(m_messages[message], field.signal)].append(field);
        periodMs = qMin(periodMs, periodFor(m_entries[field.entry]));
    }
    const QVector<Field> always = groups.size() > 1 ? groups.take({}) : QVector<Field>();
    for (const QVector<Field> &group : qAsConst(groups))
        m_broadcasts.append({message, periodMs, 0, always + group});
}

std::optional<CanFrame> Broadcaster::frameOf(const Broadcast &broadcast, const Car &car) const
{
    const DbcMessage &message = m_messages[broadcast.message];
    module::FrameBuilder builder(message);
    bool isKnown = false;
    for (const Field &field : broadcast.fields) {
        if (!car.values.knows(field.quantity))
            continue;
        const auto value = signalValue(m_entries[field.entry], message.fields[field.signal],
                                       field.quantity, car.values.value(field.quantity));
        isKnown |= value && builder.set(field.signal, *value);
    }
    if (!isKnown)
        return std::nullopt;
    return CanFrame{message.id & ~DbcMessage::extendedFlag,
                    (message.id & DbcMessage::extendedFlag) != 0, builder.data()};
}

QVector<CanFrame> Broadcaster::takeDue(const Car &car, qint64 nowMs)
{
    QVector<CanFrame> frames;
    for (Broadcast &broadcast : m_broadcasts) {
        if (broadcast.dueMs > nowMs)
            continue;
        broadcast.dueMs = qMax(broadcast.dueMs + broadcast.periodMs, nowMs + 1);
        if (const auto frame = frameOf(broadcast, car))
            frames.append(*frame);
    }
    return frames;
}

qint64 Broadcaster::nextDueMs() const
{
    qint64 dueMs = -1;
    for (const Broadcast &broadcast : m_broadcasts) {
        if (dueMs < 0 || broadcast.dueMs < dueMs)
            dueMs = broadcast.dueMs;
    }
    return dueMs;
}

} // namespace ecu
