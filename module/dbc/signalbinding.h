#pragma once

#include "dbc.h"
#include "signalmap.h"

namespace module {

/** A path of a map with a place its signal has in a DBC file. */
struct SignalLink
{
    int entry = 0; ///< of the map
    DbcPlace place;
};

/** Which signals of a DBC file feed which paths of a map. */
struct SignalBinding
{
    QVector<SignalLink>
        links;            ///< by place; a path has several where several messages carry its signal
    QVector<int> missing; ///< entries of the map whose signal no message carries
    QStringList remarks;  ///< a signal of several messages, a name that no value has
};

SignalBinding bindSignals(const SignalMap &map, const Dbc &dbc);

/** One line on an entry whose signal is missing. */
QString missingSignal(const MapEntry &entry);

} // namespace module
