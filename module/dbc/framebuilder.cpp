#include "framebuilder.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace module {

static bool fits(const DbcSignal &signal, qint64 raw)
{
    const BitField place(signal);
    return withSign(quint64(raw) & place.mask(), signBit(signal)) == raw;
}

/** A whole number as raw value; nothing beyond the 64 bits that a signal has at most. */
static std::optional<qint64> wholeNumber(double number, bool isSigned)
{
    static constexpr double limit = 9223372036854775808.0; // 2 to the 63rd
    if (number >= -limit && number < limit && (isSigned || number >= 0))
        return qint64(number);
    if (!isSigned && number >= limit && number < 2 * limit)
        return qint64(quint64(number));
    return std::nullopt;
}

static qint64 bitsOf(double number)
{
    qint64 bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

static qint64 bitsOf(float number)
{
    quint32 bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

static std::optional<qint64> rawValue(const DbcSignal &signal, double value)
{
    const double scaled = signal.factor == 0 ? 0 : (value - signal.offset) / signal.factor;
    if (signal.type == DbcSignal::Type::Double)
        return bitsOf(scaled);
    if (signal.type == DbcSignal::Type::Float)
        return bitsOf(float(scaled));
    return wholeNumber(std::round(scaled), signal.type == DbcSignal::Type::Signed);
}

FrameBuilder::FrameBuilder(const DbcMessage &message, const QByteArray &data) : m_message(message)
{
    std::copy_n(data.constData(), qMin(data.size(), message.length), m_frame.bytes);
}

bool FrameBuilder::set(int signal, double value)
{
    const auto raw = rawValue(m_message.fields.at(signal), value);
    return raw && setRaw(signal, *raw);
}

bool FrameBuilder::setRaw(int signal, qint64 raw)
{
    PaddedFrame changed = m_frame;
    const DbcSignal *field = &m_message.fields.at(signal);
    if (!put(*field, raw, &changed))
        return false;
    while (field->multiplexor >= 0) {
        const QVector<DbcRange> &values = field->selectedBy;
        field = &m_message.fields.at(field->multiplexor);
        const qint64 selected = withSign(BitField(*field).extract(changed), signBit(*field));
        const bool isSelected =
            std::any_of(values.cbegin(), values.cend(),
                        [selected](const DbcRange &range) { return range.contains(selected); });
        if (!isSelected && !put(*field, values.constFirst().from, &changed))
            return false;
    }
    m_frame = changed;
    return true;
}

bool FrameBuilder::put(const DbcSignal &signal, qint64 raw, PaddedFrame *frame) const
{
    const BitField place(signal);
    if (place.endByte() > m_message.length || !fits(signal, raw))
        return false;
    place.insert(quint64(raw), frame);
    return true;
}

QByteArray FrameBuilder::data() const
{
    return {reinterpret_cast<const char *>(m_frame.bytes), m_message.length};
}

} // namespace module
