#include "timeorder.h"

#include <algorithm>

namespace module {

/**
 * The longest sequence in order, by patience sorting: of all sequences of a length, the one that
 * ends earliest is kept, with the predecessor of each of its times.
 */
QVector<bool> outOfOrder(const QVector<qint64> &times)
{
    QVector<int> lastOfLength;
    QVector<int> predecessors(times.size(), -1);
    for (int i = 0; i < times.size(); ++i) {
        const auto place =
            std::upper_bound(lastOfLength.begin(), lastOfLength.end(), times[i],
                             [&times](qint64 time, int index) { return time < times[index]; });
        if (place != lastOfLength.begin())
            predecessors[i] = *(place - 1);
        if (place == lastOfLength.end())
            lastOfLength.append(i);
        else
            *place = i;
    }
    QVector<bool> isOut(times.size(), true);
    for (int i = lastOfLength.isEmpty() ? -1 : lastOfLength.constLast(); i >= 0;
         i = predecessors[i])
        isOut[i] = false;
    return isOut;
}

} // namespace module
