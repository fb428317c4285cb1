#include "emissionqueue.h"

#include <algorithm>

namespace module {

void EmissionQueue::clear()
{
    m_queue.clear();
    m_last.clear();
    m_said.clear();
}

Emission EmissionQueue::take()
{
    Emission emission = m_queue.takeFirst();
    m_said.insert(emission.signal, emission.arguments);
    return emission;
}

void EmissionQueue::insert(const Emission &emission)
{
    const auto behind =
        std::upper_bound(m_queue.begin(), m_queue.end(), emission.atMs,
                         [](qint64 ms, const Emission &other) { return ms < other.atMs; });
    m_queue.insert(behind, emission);
}

void EmissionQueue::say(qint64 atMs, const QByteArray &signal, const QVariantList &arguments)
{
    insert({atMs, signal, arguments});
    m_last.insert(signal, arguments);
}

void EmissionQueue::sayChange(qint64 atMs, const QByteArray &signal, const QVariantList &arguments)
{
    if (m_last.value(signal) != arguments)
        say(atMs, signal, arguments);
}

void EmissionQueue::drop(const QByteArray &signal)
{
    const auto isIt = [&signal](const Emission &emission) { return emission.signal == signal; };
    m_queue.erase(std::remove_if(m_queue.begin(), m_queue.end(), isIt), m_queue.end());
}

void EmissionQueue::resend(qint64 atMs, const QByteArray &signal)
{
    // What is planned for later is not known by then.
    Emission last = {atMs, signal, m_said.value(signal)};
    bool isKnown = m_said.contains(signal);
    for (const Emission &planned : qAsConst(m_queue)) {
        if (planned.signal != signal || planned.atMs > atMs)
            continue;
        last.arguments = planned.arguments;
        isKnown = true;
    }
    if (isKnown)
        insert(last);
}

void EmissionQueue::resendAll(qint64 atMs, const QByteArray &prefix)
{
    QList<QByteArray> names = m_last.keys();
    std::sort(names.begin(), names.end());
    for (const QByteArray &name : names) {
        if (name.startsWith(prefix))
            resend(atMs, name);
    }
}

} // namespace module
