#pragma once

#include <QByteArray>

namespace module {

constexpr int longestFrame = 8; ///< in bytes, without CAN FD

/** A data frame on a CAN bus. */
struct CanFrame
{
    quint32 id = 0;
    bool isExtended = false; ///< an identifier of 29 bits
    QByteArray data;         ///< at most 8 bytes, with CAN FD at most 64
};

} // namespace module
