#pragma once

#include "linkmembers.h"

#include <QMutex>
#include <QVector>

namespace bus {

/** What arrived in the link's thread and waits for the thread of the screens. */
class Inbox
{
public:
    /** More than this waits only when a module sends faster than the screens can show. */
    static constexpr int Most = 20000;

    /**
     * @param isFirst  whether nothing waited, so that the receiver has to be woken
     * @return false when it is full
     */
    bool add(const Record &record, bool *isFirst);
    void clear();
    QVector<Record> take();

private:
    QMutex m_mutex;
    QVector<Record> m_records;
};

} // namespace bus
