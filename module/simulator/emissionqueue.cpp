#include "emissionqueue.h"

#include <algorithm>

namespace module {

void EmissionQueue::clear()
{
    m_queue.clear();
    m_last.clear();
}

void EmissionQueue::say(qint64 atMs, const QByteArray &signal, const QVariantList &arguments)
{
    const auto behind =
        std::upper_bound(m_queue.begin(), m_queue.end(), atMs,
                         [](qint64 ms, const Emission &emission) { return ms < emission.atMs; });
    m_queue.insert(behind, {atMs, signal, arguments});
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
    const auto last = m_last.constFind(signal);
    if (last != m_last.constEnd())
        say(atMs, signal, QVariantList(*last));
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
