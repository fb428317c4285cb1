#pragma once

#include "samplesource.h"

#include <optional>

namespace module {

/** One line of a candump log. */
struct LoggedFrame
{
    /** Set in the identifiers of 29 bits. */
    static constexpr quint32 ExtendedFlag = 0x80000000;

    qint64 timeUs = 0;
    quint32 id = 0;
    QByteArray data; ///< none for a remote frame
};

/**
 * Reads a line such as "(1725694999.693250) can0 7E8#0641010027E100CC", with or without a direction
 * mark after it.
 */
std::optional<LoggedFrame> parseCandumpLine(const QByteArray &line);

/**
 * Reads a candump log with OBD-II answers. Other frames and damaged lines are ignored and counted.
 * @param error  one line, when it holds no values to play
 */
std::optional<SampleLog> readCandump(const QString &path, QString *error);

} // namespace module
