#pragma once

#include "live/canframe.h"

#include <QString>
#include <QVector>

namespace module {

/**
 * One transport connection of ISO 15765-2 between two identifiers: messages of up to 4095 bytes as
 * single frames, or as a first frame and consecutive ones under flow control. It has no clock and
 * no bus of its own: every call brings the time, and what is to be sent is taken from it.
 */
class IsoTp
{
public:
    struct Addresses
    {
        quint32 send = 0;    ///< identifier of the frames sent
        quint32 receive = 0; ///< identifier of the frames received
        bool isExtended = false;
    };
    struct Timing
    {
        int blockSize = 0;    ///< consecutive frames that the other side sends at once, 0 for all
        int separationMs = 0; ///< between two of them
        qint64 timeoutMs = 1000; ///< for flow control and for the next consecutive frame
        int padding = 0x55;      ///< fills frames to 8 bytes; -1 leaves them short
    };

    explicit IsoTp(const Addresses &addresses, const Timing &timing = {});

    /** Sends a message; one that is still being sent is given up. */
    void send(const QByteArray &message, qint64 nowMs);
    /** A frame of the bus. One with another identifier is ignored. */
    void receive(const CanFrame &frame, qint64 nowMs);
    /** Notices time-outs, and sends what waited for its separation time. */
    void advance(qint64 nowMs);
    /** When advance() has something to do; -1 for never. */
    qint64 nextDueMs() const;

    /** The frames that are due, in order; each is taken once. */
    QVector<CanFrame> takeFrames();
    /** The messages that have arrived, in order; each is taken once. */
    QVector<QByteArray> takeMessages();
    /** What went wrong since the last time, in one line; empty for nothing. */
    QString takeError();

private:
    // To be written with the implementation.
};

} // namespace module
