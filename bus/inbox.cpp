#include "inbox.h"

namespace bus {

bool Inbox::add(const Record &record, bool *isFirst)
{
    const QMutexLocker lock(&m_mutex);
    *isFirst = m_records.isEmpty();
    if (m_records.size() >= Most)
        return false;
    m_records.append(record);
    return true;
}

void Inbox::clear()
{
    const QMutexLocker lock(&m_mutex);
    m_records.clear();
}

QVector<Record> Inbox::take()
{
    const QMutexLocker lock(&m_mutex);
    return std::exchange(m_records, {});
}

} // namespace bus
