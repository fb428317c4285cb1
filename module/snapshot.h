#pragma once

#include <QByteArray>
#include <QHash>
#include <QMap>
#include <QSet>
#include <QVariant>
#include <QVector>

#include <algorithm>
#include <utility>

namespace module {

// A state snapshot: the signals that bring a page up to date, which are the last one of each name.
// Some signals carry only a part of a page's state, for instance one line of a menu; of those it
// holds the last one of each part.

/** Which part of its page's state a signal carries; 0 when it replaces all parts. */
int statePart(const QByteArray &signal, const QVariantList &arguments);
constexpr int noPart = -1;

/** Keeps the snapshot of a sequence of signals. `Item` is what is kept of a signal. */
template <typename Item>
class Snapshot
{
public:
    bool isEmpty() const { return m_parts.isEmpty(); }
    void clear() { m_parts.clear(); }

    void add(const QByteArray &signal, const QVariantList &arguments, const Item &item)
    {
        const int part = statePart(signal, arguments);
        QMap<int, Numbered> &parts = m_parts[signal];
        if (part == 0)
            parts.clear();
        parts.insert(part, {m_count++, item});
    }

    /** In the order in which they came. */
    QVector<Item> items() const { return inOrder(m_parts.cbegin(), m_parts.cend()); }

    /** Those whose names begin with a prefix, by name; of each name in the order they came. */
    QVector<Item> itemsWith(const QByteArray &prefix) const
    {
        QVector<Item> found;
        auto it = m_parts.lowerBound(prefix);
        for (; it != m_parts.cend() && it.key().startsWith(prefix); ++it)
            found += inOrder(it, std::next(it));
        return found;
    }

private:
    using Numbered = std::pair<qint64, Item>; // counted as they come

    template <typename Iterator>
    static QVector<Item> inOrder(Iterator begin, Iterator end)
    {
        QMap<qint64, Item> ordered;
        for (auto it = begin; it != end; ++it) {
            for (const Numbered &numbered : *it)
                ordered.insert(numbered.first, numbered.second);
        }
        return ordered.values().toVector();
    }

    QMap<QByteArray, QMap<int, Numbered>> m_parts; // by name and part
    qint64 m_count = 0;
};

/**
 * Finds the snapshot in a log, reading it backwards and no further than needed.
 * @param end     the index after the last entry to take into account
 * @param names   how many different signals the log holds
 * @param nameAt  the name of an entry, or another unique key of it
 * @param partAt  its `statePart()`, or `noPart` for an entry that is no signal
 * @return the indices of the entries, in order
 */
template <typename NameAt, typename PartAt>
QVector<int> snapshotOfLog(int end, int names, NameAt nameAt, PartAt partAt)
{
    using Name = std::decay_t<decltype(nameAt(0))>;
    QSet<Name> complete; // nothing before matters for these
    QHash<Name, QSet<int>> parts;
    QVector<int> found;
    for (int i = end - 1; i >= 0 && complete.size() < names; --i) {
        const Name name = nameAt(i);
        if (complete.contains(name))
            continue;
        const int part = partAt(i);
        if (part == 0)
            complete.insert(name);
        if (part == noPart || parts[name].contains(part))
            continue;
        parts[name].insert(part);
        found.append(i);
    }
    std::reverse(found.begin(), found.end());
    return found;
}

} // namespace module
