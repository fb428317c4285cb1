#pragma once

#include "dbc.h"

namespace module {

/** Multiplexors inside each other, at most: what selects a signal is not followed further. */
constexpr int deepestMultiplexing = 16;

/** What is wrong with a signal, for a line of its own. */
struct DbcFinding
{
    int line = 0;
    QString text;
};

/**
 * Gives each selected signal its multiplexor, where the file has left it to the only one there is.
 * @return what makes the message impossible to decode: no multiplexor or several to choose from, a
 *         circle, a multiplexor that shares bits with a signal it selects
 */
std::optional<DbcFinding> resolveMultiplexing(DbcMessage *message);

/** Signals that share bits though one frame may carry both; each with the first it does so with. */
QVector<DbcFinding> overlaps(const DbcMessage &message);

} // namespace module
