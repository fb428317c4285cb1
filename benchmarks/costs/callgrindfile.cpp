#include "callgrindfile.h"

static const QByteArray triggerMark = "desc: Trigger: Client Request: ";
static const QByteArray totalMark = "summary: ";

QList<Cost> costsOf(const QByteArray &callgrindFile)
{
    QList<Cost> costs;
    bool isWanted = false;
    for (const QByteArray &line : callgrindFile.split('\n')) {
        if (line.startsWith(triggerMark)) {
            const QList<QByteArray> fields = line.mid(triggerMark.size()).split('|');
            costs.append({fields.value(0), 0, fields.value(1).toLongLong()});
            isWanted = true;
        } else if (isWanted && line.startsWith(totalMark)) {
            costs.last().instructions = line.mid(totalMark.size()).toLongLong();
            isWanted = false;
        }
    }
    return costs;
}
