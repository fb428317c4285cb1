#include "meter.h"

#include "allocations.h"

#include <valgrind/callgrind.h>

#include <cstdio>

static void dump(const QByteArray &name, long allocations)
{
    const QByteArray trigger = name + '|' + QByteArray::number(qint64(allocations));
    CALLGRIND_DUMP_STATS_AT(trigger.constData());
    if (!RUNNING_ON_VALGRIND)
        std::printf("%s\n", trigger.constData());
}

void measure(const QByteArray &name, const std::function<void()> &action)
{
    const long before = allocations();
    CALLGRIND_TOGGLE_COLLECT;
    action();
    CALLGRIND_TOGGLE_COLLECT;
    dump(name, allocations() - before);
}

void dumpTotal(const QByteArray &name)
{
    const long taken = allocations();
    CALLGRIND_TOGGLE_COLLECT;
    dump(name, taken);
}
