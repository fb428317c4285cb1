#include "adapter/answerlines.h"

namespace ecu {

// The upper half of a frame's first byte.
enum class FrameKind : quint8 { Single, First, Consecutive, FlowControl };

static FrameKind kindOf(const QByteArray &data)
{
    return FrameKind(data.isEmpty() ? 0 : quint8(data[0]) >> 4);
}

static QByteArray hexText(const QByteArray &data, bool isSpaced)
{
    const QByteArray hex = isSpaced ? data.toHex(' ') + ' ' : data.toHex();
    return data.isEmpty() ? QByteArray() : hex.toUpper();
}

static QByteArray digits(quint32 number, int count)
{
    return QByteArray::number(number, 16).rightJustified(count, '0').toUpper();
}

static QByteArray header(const module::CanFrame &frame, bool isSpaced)
{
    if (frame.isExtended)
        return hexText(QByteArray::fromHex(digits(frame.id, 8)), isSpaced);
    return digits(frame.id, 3) + (isSpaced ? " " : "");
}

/** Without what only fills the frame up. */
static QByteArray trimmed(const QByteArray &data)
{
    return kindOf(data) == FrameKind::Single && !data.isEmpty() ? data.left(1 + (data[0] & 0x0F))
                                                                : data;
}

static QByteArrayList formattedLines(const QByteArray &data, bool isSpaced)
{
    const QByteArray separator = isSpaced ? ": " : ":";
    switch (kindOf(data)) {
    case FrameKind::First: {
        const quint32 length =
            quint32(data[0] & 0x0F) << 8 | quint8(data.mid(1, 1).append('\0')[0]);
        return {digits(length, 3), '0' + separator + hexText(data.mid(2), isSpaced)};
    }
    case FrameKind::Consecutive:
        return {digits(data[0] & 0x0F, 1) + separator + hexText(data.mid(1), isSpaced)};
    default:
        return {hexText(trimmed(data).mid(1), isSpaced)};
    }
}

QByteArrayList answerLines(const module::CanFrame &frame, const AdapterState &state)
{
    const bool isSpaced = state.spacesBytes;
    if (!state.showsHeaders && state.formatsData)
        return formattedLines(frame.data, isSpaced);
    const QByteArray data = state.formatsData ? trimmed(frame.data) : frame.data;
    if (!state.showsHeaders)
        return {hexText(data, isSpaced)};
    const QByteArray length = digits(quint32(frame.data.size()), 1) + (isSpaced ? " " : "");
    return {header(frame, isSpaced) + (state.showsLength ? length : "") + hexText(data, isSpaced)};
}

} // namespace ecu
