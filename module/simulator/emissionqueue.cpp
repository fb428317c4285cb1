#include "emissionqueue.h"

#include <algorithm>

namespace module {

void EmissionQueue::clear()
{
    m_queue.clear();
    m_last.clear();
    m_taken.clear();
}

Emission EmissionQueue::take()
{
    Emission emission = m_queue.takeFirst();
    m_taken.add(emission.signal, emission.arguments, emission);
    return emission;
}

/** After all others of the same time. */
void EmissionQueue::insert(const Emission &emission)
{
    const auto next =
        std::upper_bound(m_queue.begin(), m_queue.end(), emission.atMs,
                         [](qint64 ms, const Emission &other) { return ms < other.atMs; });
    m_queue.insert(next, emission);
}

void EmissionQueue::add(qint64 atMs, const QByteArray &signal, const QVariantList &arguments)
{
    insert({atMs, signal, arguments});
    m_last.insert(signal, arguments);
}

void EmissionQueue::addChange(qint64 atMs, const QByteArray &signal, const QVariantList &arguments)
{
    if (m_last.value(signal) != arguments)
        add(atMs, signal, arguments);
}

void EmissionQueue::cancel(const QByteArray &signal)
{
    const auto isIt = [&signal](const Emission &emission) { return emission.signal == signal; };
    m_queue.erase(std::remove_if(m_queue.begin(), m_queue.end(), isIt), m_queue.end());
}

Snapshot<Emission> EmissionQueue::stateAt(qint64 ms) const
{
    Snapshot<Emission> state = m_taken;
    for (const Emission &planned : m_queue) {
        if (planned.atMs <= ms)
            state.add(planned.signal, planned.arguments, planned);
    }
    return state;
}

void EmissionQueue::resend(qint64 atMs, const QList<QByteArray> &prefixes)
{
    const Snapshot<Emission> state = stateAt(atMs);
    for (const QByteArray &prefix : prefixes) {
        const QVector<Emission> found = state.itemsWith(prefix);
        for (const Emission &emission : found)
            insert({atMs, emission.signal, emission.arguments});
    }
}

void EmissionQueue::prependState(qint64 atMs)
{
    QVector<Emission> state = m_taken.items();
    for (Emission &emission : state)
        emission.atMs = atMs;
    m_queue = state + m_queue;
}

} // namespace module
