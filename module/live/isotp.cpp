#include "isotp.h"

#include "obdservices.h"

#include <algorithm>
#include <utility>

namespace module {

using obd::byteAt;

enum class FrameKind : quint8 { Single, First, Consecutive, FlowControl };
enum class FlowStatus : quint8 { Continue, Wait, Overflow };

static constexpr int singleSize = 7;      // most bytes of a single frame, also of a consecutive one
static constexpr int firstSize = 6;       // bytes of a first frame
static constexpr int flowControlSize = 3; // kind and status, block size, separation time
static constexpr int mostWaits = 10;      // frames in a row that only ask for patience

static char header(FrameKind kind, int low)
{
    return char(int(kind) << 4 | low);
}

/** In whole milliseconds, up to 127; the values for 100 to 900 microseconds count as one. */
static int separationMsOf(quint8 code)
{
    static constexpr quint8 longest = 0x7F;
    static constexpr quint8 firstMicroseconds = 0xF1;
    static constexpr quint8 lastMicroseconds = 0xF9;
    if (code >= firstMicroseconds && code <= lastMicroseconds)
        return 1;
    return std::min(code, longest); // reserved ones mean the longest
}

IsoTp::IsoTp(const Addresses &addresses) : IsoTp(addresses, Timing()) {}

IsoTp::IsoTp(const Addresses &addresses, const Timing &timing)
    : m_addresses(addresses), m_timing(timing)
{
}

void IsoTp::send(const QByteArray &message, qint64 nowMs)
{
    m_out = Outgoing();
    const int size = message.size();
    if (size < 1 || size > LongestMessage) {
        m_error = QStringLiteral("expected a message of 1 to %1 bytes to send, got %2")
                      .arg(LongestMessage)
                      .arg(size);
        return;
    }
    if (size <= singleSize) {
        sendFrame(header(FrameKind::Single, size) + message);
        return;
    }
    sendFrame(header(FrameKind::First, size >> 8) + QByteArray(1, char(size & 0xFF)) +
              message.left(firstSize));
    m_out.message = message;
    m_out.sent = firstSize;
    m_out.sequence = 1;
    awaitFlowControl(nowMs);
}

void IsoTp::receive(const CanFrame &frame, qint64 nowMs)
{
    if (frame.id != m_addresses.receive || frame.isExtended != m_addresses.isExtended ||
        frame.data.isEmpty() || frame.data.size() > longestFrame)
        return;
    switch (FrameKind(byteAt(frame.data, 0) >> 4)) {
    case FrameKind::Single:
        receiveSingle(frame.data);
        break;
    case FrameKind::First:
        receiveFirst(frame.data, nowMs);
        break;
    case FrameKind::Consecutive:
        receiveConsecutive(frame.data, nowMs);
        break;
    case FrameKind::FlowControl:
        receiveFlowControl(frame.data, nowMs);
        break;
    }
}

void IsoTp::receiveSingle(const QByteArray &data)
{
    const int length = byteAt(data, 0) & 0xF;
    if (length < 1 || length > singleSize)
        return;
    abandonReception();
    if (data.size() > length)
        m_messages.append(data.mid(1, length));
    else
        giveUpReceiving(QStringLiteral("single frame: expected %1 bytes after the first, got %2")
                            .arg(length)
                            .arg(data.size() - 1));
}

void IsoTp::receiveFirst(const QByteArray &data, qint64 nowMs)
{
    if (data.size() < longestFrame)
        return;
    const int length = (byteAt(data, 0) & 0xF) << 8 | byteAt(data, 1);
    if (length == 0) { // a longer message, whose length follows
        sendFrame(QByteArray(1, header(FrameKind::FlowControl, int(FlowStatus::Overflow))) +
                  QByteArray(flowControlSize - 1, '\0'));
        giveUpReceiving(QStringLiteral("expected a message of at most %1 bytes, got a longer one")
                            .arg(LongestMessage));
        return;
    }
    if (length <= singleSize)
        return;
    abandonReception();
    m_in.isOpen = true;
    m_in.length = length;
    m_in.message = data.mid(2);
    m_in.sequence = 1;
    openBlock(nowMs);
}

/** The start of a message ends one that is not yet complete. */
void IsoTp::abandonReception()
{
    if (m_in.isOpen)
        giveUpReceiving(QStringLiteral("expected %1 bytes of a message, got %2 and another message")
                            .arg(m_in.length)
                            .arg(m_in.message.size()));
}

void IsoTp::openBlock(qint64 nowMs)
{
    QByteArray data(flowControlSize, header(FrameKind::FlowControl, int(FlowStatus::Continue)));
    data[1] = char(m_timing.blockSize);
    data[2] = char(m_timing.separationMs);
    sendFrame(data);
    m_in.leftInBlock = m_timing.blockSize > 0 ? m_timing.blockSize : -1;
    m_in.dueMs = nowMs + m_timing.timeoutMs;
}

void IsoTp::receiveConsecutive(const QByteArray &data, qint64 nowMs)
{
    if (!m_in.isOpen)
        return;
    const int sequence = byteAt(data, 0) & 0xF;
    const int wanted = std::min(singleSize, m_in.length - m_in.message.size());
    if (sequence != m_in.sequence) {
        giveUpReceiving(QStringLiteral("expected consecutive frame %1, got %2")
                            .arg(m_in.sequence)
                            .arg(sequence));
        return;
    }
    if (data.size() <= wanted) {
        giveUpReceiving(QStringLiteral("consecutive frame: expected %1 bytes, got %2")
                            .arg(wanted)
                            .arg(data.size() - 1));
        return;
    }
    m_in.message += data.mid(1, wanted);
    m_in.sequence = (m_in.sequence + 1) & 0xF;
    m_in.dueMs = nowMs + m_timing.timeoutMs;
    if (m_in.message.size() == m_in.length)
        m_messages.append(std::exchange(m_in, Incoming()).message);
    else if (m_in.leftInBlock > 0 && --m_in.leftInBlock == 0)
        openBlock(nowMs);
}

void IsoTp::receiveFlowControl(const QByteArray &data, qint64 nowMs)
{
    if (m_out.phase != Phase::AwaitingFlowControl || data.size() < flowControlSize)
        return;
    switch (FlowStatus(byteAt(data, 0) & 0xF)) {
    case FlowStatus::Continue:
        beginBlock(byteAt(data, 1), byteAt(data, 2), nowMs);
        return;
    case FlowStatus::Wait:
        waitAgain(nowMs);
        return;
    case FlowStatus::Overflow:
        giveUpSending(QStringLiteral("the message of %1 bytes is too long for the other side")
                          .arg(m_out.message.size()));
        return;
    }
    giveUpSending(QStringLiteral("flow control: expected a status of 0 to 2, got %1")
                      .arg(byteAt(data, 0) & 0xF));
}

void IsoTp::awaitFlowControl(qint64 nowMs)
{
    m_out.phase = Phase::AwaitingFlowControl;
    m_out.waits = 0;
    m_out.dueMs = nowMs + m_timing.timeoutMs;
}

void IsoTp::waitAgain(qint64 nowMs)
{
    m_out.dueMs = nowMs + m_timing.timeoutMs;
    if (++m_out.waits > mostWaits)
        giveUpSending(QStringLiteral("the other side asked to wait %1 times").arg(m_out.waits));
}

void IsoTp::beginBlock(quint8 blockSize, quint8 separation, qint64 nowMs)
{
    m_out.phase = Phase::SendingBlock;
    m_out.leftInBlock = blockSize > 0 ? blockSize : -1;
    m_out.separationMs = separationMsOf(separation);
    m_out.dueMs = nowMs;
    sendConsecutive(nowMs);
}

/** Every frame that is due; with a separation time that is one. */
void IsoTp::sendConsecutive(qint64 nowMs)
{
    while (m_out.phase == Phase::SendingBlock && nowMs >= m_out.dueMs) {
        sendFrame(header(FrameKind::Consecutive, m_out.sequence) +
                  m_out.message.mid(m_out.sent, singleSize));
        m_out.sequence = (m_out.sequence + 1) & 0xF;
        m_out.sent += singleSize;
        // Of a clock in whole milliseconds one more makes sure that the time has passed.
        m_out.dueMs = m_out.separationMs > 0 ? nowMs + m_out.separationMs + 1 : nowMs;
        if (m_out.sent >= m_out.message.size())
            m_out = Outgoing();
        else if (m_out.leftInBlock > 0 && --m_out.leftInBlock == 0)
            awaitFlowControl(nowMs);
    }
}

void IsoTp::advance(qint64 nowMs)
{
    sendConsecutive(nowMs);
    if (m_out.phase == Phase::AwaitingFlowControl && nowMs >= m_out.dueMs)
        giveUpSending(QStringLiteral("no flow control within %1 ms").arg(m_timing.timeoutMs));
    if (m_in.isOpen && nowMs >= m_in.dueMs)
        giveUpReceiving(QStringLiteral("no consecutive frame %1 within %2 ms")
                            .arg(m_in.sequence)
                            .arg(m_timing.timeoutMs));
}

qint64 IsoTp::nextDueMs() const
{
    const bool isSending = m_out.phase != Phase::Idle;
    if (isSending && m_in.isOpen)
        return std::min(m_out.dueMs, m_in.dueMs);
    if (isSending)
        return m_out.dueMs;
    return m_in.isOpen ? m_in.dueMs : -1;
}

void IsoTp::sendFrame(QByteArray data)
{
    if (m_timing.padding >= 0)
        data.append(longestFrame - data.size(), char(m_timing.padding));
    m_frames.append({m_addresses.send, m_addresses.isExtended, data});
}

void IsoTp::giveUpSending(const QString &error)
{
    m_out = Outgoing();
    m_error = error;
}

void IsoTp::giveUpReceiving(const QString &error)
{
    m_in = Incoming();
    m_error = error;
}

QVector<CanFrame> IsoTp::takeFrames()
{
    return std::exchange(m_frames, {});
}

QVector<QByteArray> IsoTp::takeMessages()
{
    return std::exchange(m_messages, {});
}

QString IsoTp::takeError()
{
    return std::exchange(m_error, {});
}

} // namespace module
