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
    static constexpr int LongestMessage = 4095;

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

    explicit IsoTp(const Addresses &addresses);
    IsoTp(const Addresses &addresses, const Timing &timing);

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
    enum class Phase { Idle, AwaitingFlowControl, SendingBlock };
    struct Outgoing
    {
        Phase phase = Phase::Idle;
        QByteArray message;
        int sent = 0;
        quint8 sequence = 0;
        int leftInBlock = 0; ///< consecutive frames until the next flow control, -1 for no limit
        int waits = 0;
        qint64 separationMs = 0;
        qint64 dueMs = 0; ///< of the next frame, or the end of waiting for flow control
    };
    struct Incoming
    {
        bool isOpen = false;
        QByteArray message;
        int length = 0;
        quint8 sequence = 0; ///< expected next
        int leftInBlock = 0;
        qint64 dueMs = 0; ///< end of waiting for the next consecutive frame
    };

    void receiveSingle(const QByteArray &data);
    void receiveFirst(const QByteArray &data, qint64 nowMs);
    void receiveConsecutive(const QByteArray &data, qint64 nowMs);
    void receiveFlowControl(const QByteArray &data, qint64 nowMs);
    void beginBlock(quint8 blockSize, quint8 separation, qint64 nowMs);
    void awaitFlowControl(qint64 nowMs);
    void waitAgain(qint64 nowMs);
    void sendConsecutive(qint64 nowMs);
    void openBlock(qint64 nowMs);
    void abandonReception();
    void sendFrame(QByteArray data);
    void giveUpSending(const QString &error);
    void giveUpReceiving(const QString &error);

    Addresses m_addresses;
    Timing m_timing;
    Outgoing m_out;
    Incoming m_in;
    QVector<CanFrame> m_frames;
    QVector<QByteArray> m_messages;
    QString m_error;
};

} // namespace module
