#include "session/journalsnapshot.h"

#include "snapshot.h"

#include <algorithm>

QVector<int> snapshotOf(const Journal &journal, qint64 ms)
{
    const QVector<int> &places = journal.ofKind(Journal::Signal);
    const auto names =
        std::count_if(journal.totals().begin(), journal.totals().end(),
                      [](const Journal::Total &total) { return total.kind == Journal::Signal; });
    const auto entryAt = [&](int i) -> const Journal::Entry & {
        return journal.entries()[places[i]];
    };
    QVector<int> entries = module::snapshotOfLog(
        journal.lowerBound(Journal::Signal, ms + 1), int(names),
        [&](int i) { return entryAt(i).name; },
        [&](int i) {
            return module::statePart(journal.nameOf(entryAt(i)).toLatin1(), entryAt(i).arguments);
        });
    for (int &entry : entries)
        entry = places[entry];
    return entries;
}
