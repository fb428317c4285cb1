#pragma once

#include "samplesource.h"

#include <optional>

namespace module {

/** One line of a candump log. */
struct CanFrame
{
    qint64 timeUs = 0;
    quint32 id = 0;
    QByteArray data;
};

/**
 * Reads a line such as "(1725694999.693250) can0 7E8#0641010027E100CC", with or without a direction
 * mark behind it.
 */
std::optional<CanFrame> parseCandumpLine(const QByteArray &line);

/**
 * Reads a candump log with OBD-II answers. Other frames are passed over and counted, and so are
 * lines that are damaged.
 * @param error  one line, when there is nothing in it to play
 */
std::optional<SampleLog> readCandump(const QString &path, QString *error);

} // namespace module
