#pragma once

#include <QHash>
#include <QVector>

namespace module {

/** Finds what belongs to a frame's identifier; the 11 bits of most buses without a search. */
class IdTable
{
public:
    void insert(quint32 id, int index)
    {
        if (id < StandardIds)
            m_standard[int(id)] = index;
        else
            m_others.insert(id, index);
    }
    /** @return -1 for an identifier that is not known */
    int find(quint32 id) const
    {
        return id < StandardIds ? m_standard.at(int(id)) : m_others.value(id, -1);
    }

private:
    static constexpr quint32 StandardIds = 0x800;

    QVector<int> m_standard = QVector<int>(StandardIds, -1);
    QHash<quint32, int> m_others;
};

} // namespace module
