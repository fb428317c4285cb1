#pragma once

#include <QByteArray>
#include <QHash>
#include <QMap>
#include <QSet>
#include <QVariant>
#include <QVector>

#include <utility>

namespace module {

// What brings a screen up to date: the last of each signal. Some signals tell a part of their
// matter only and leave the rest as it was told before; of those it takes the last of each part as
// well.

/** Which part of its matter a signal tells; 0 for the whole of it. */
int partTold(const QByteArray &signal, const QVariantList &arguments);

/** Keeps what brings a screen up to date while signals come. `What` stands for one of them. */
template <typename What>
class LastSaid
{
public:
    bool isEmpty() const { return m_said.isEmpty(); }
    void clear() { m_said.clear(); }

    void say(const QByteArray &signal, const QVariantList &arguments, const What &what)
    {
        const int part = partTold(signal, arguments);
        QMap<int, Said> &parts = m_said[signal];
        if (part == 0)
            parts.clear();
        parts.insert(part, {m_count++, what});
    }

    /** In the order in which they came. */
    QVector<What> inOrder() const
    {
        QMap<qint64, What> ordered;
        for (const QMap<int, Said> &parts : m_said) {
            for (const Said &said : parts)
                ordered.insert(said.first, said.second);
        }
        return ordered.values().toVector();
    }

private:
    using Said = std::pair<qint64, What>; // numbered as they come

    QHash<QByteArray, QMap<int, Said>> m_said;
    qint64 m_count = 0;
};

/** Picks the same out of signals that are gone through from the latest back. */
template <typename Name>
class SaidBefore
{
public:
    /** @param names  how many different signals there are */
    explicit SaidBefore(int names) : m_names(names) {}

    bool isComplete() const { return m_whole.size() >= m_names; }
    /** Whether nothing before matters any more for a signal. */
    bool isWhole(const Name &name) const { return m_whole.contains(name); }
    bool takes(const Name &name, int part)
    {
        if (isWhole(name) || m_parts[name].contains(part))
            return false;
        m_parts[name].insert(part);
        if (part == 0)
            m_whole.insert(name);
        return true;
    }

private:
    int m_names;
    QSet<Name> m_whole;
    QHash<Name, QSet<int>> m_parts;
};

} // namespace module
