#include "calllog.h"

#include <QMetaMethod>

CallLog *CallLog::instance()
{
    static auto *const log = new CallLog;
    return log;
}

bool CallLog::isWatched() const
{
    static const QMetaMethod signal = QMetaMethod::fromSignal(&CallLog::called);
    return isSignalConnected(signal);
}
