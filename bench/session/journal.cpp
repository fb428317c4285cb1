#include "session/journal.h"

#include <algorithm>

Journal::Journal(int limit, QObject *parent) : QObject(parent), m_limit(limit) {}

Journal::~Journal() = default;

int Journal::intern(Kind kind, const QString &name)
{
    const auto known = m_names[kind].constFind(name);
    if (known != m_names[kind].constEnd())
        return *known;
    Total total;
    total.name = name;
    total.kind = kind;
    m_totals.append(total);
    m_names[kind].insert(name, m_totals.size() - 1);
    return m_totals.size() - 1;
}

void Journal::note(qint64 ms, Kind kind, const QString &name, const QVariantList &arguments)
{
    append(ms, kind, intern(kind, name), arguments);
}

void Journal::noteSignal(qint64 ms, const QByteArray &name, const QVariantList &arguments)
{
    auto known = m_signals.constFind(name);
    if (known == m_signals.constEnd())
        known = m_signals.insert(name, intern(Signal, QString::fromLatin1(name)));
    append(ms, Signal, *known, arguments);
}

void Journal::append(qint64 ms, Kind kind, int name, const QVariantList &arguments)
{
    Total &total = m_totals[name];
    ++total.count;
    total.lastMs = ms;
    total.last = arguments;
    ++m_counts[kind];
    if (m_limit > 0) {
        if (m_entries.size() >= m_limit)
            dropOldest();
        insertPlace(kind, ms);
        m_entries.append({ms, arguments, name, kind});
    }
    emit noted();
}

/** A mark on a rewound screen comes before marks that were set earlier. */
void Journal::insertPlace(Kind kind, qint64 ms)
{
    QVector<int> &places = m_ofKind[kind];
    int at = places.size();
    while (at > 0 && m_entries[places[at - 1]].ms > ms)
        --at;
    places.insert(at, m_entries.size());
}

/** A tenth at a time, so that it happens rarely. */
void Journal::dropOldest()
{
    const int gone = qMax(1, m_entries.size() / 10);
    m_entries.erase(m_entries.begin(), m_entries.begin() + gone);
    m_dropped += gone;
    for (QVector<int> &places : m_ofKind) {
        places.erase(std::remove_if(places.begin(), places.end(),
                                    [gone](int place) { return place < gone; }),
                     places.end());
        for (int &place : places)
            place -= gone;
    }
    emit shifted(gone);
}

const Journal::Total *Journal::totalOf(Kind kind, const QString &name) const
{
    const auto known = m_names[kind].constFind(name);
    return known == m_names[kind].constEnd() ? nullptr : &m_totals[*known];
}

int Journal::lowerBound(Kind kind, qint64 ms) const
{
    const QVector<int> &places = m_ofKind[kind];
    const auto found =
        std::lower_bound(places.cbegin(), places.cend(), ms,
                         [this](int place, qint64 moment) { return m_entries[place].ms < moment; });
    return int(found - places.cbegin());
}

static bool isNoMark(const Journal::Entry &entry)
{
    return entry.kind != Journal::Mark;
}

qint64 Journal::beginMs() const
{
    const auto first = std::find_if(m_entries.cbegin(), m_entries.cend(), isNoMark);
    return first == m_entries.cend() ? 0 : first->ms;
}

qint64 Journal::endMs() const
{
    const auto last = std::find_if(m_entries.crbegin(), m_entries.crend(), isNoMark);
    return last == m_entries.crend() ? 0 : last->ms;
}
