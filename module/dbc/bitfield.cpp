#include "bitfield.h"

namespace module {

static constexpr int wordBits = 64;

BitField::BitField(const DbcSignal &signal)
    : m_mask(~quint64(0) >> (wordBits - signal.length))
    , m_firstByte(quint16(signal.startBit / 8))
    , m_isBigEndian(signal.byteOrder == DbcSignal::ByteOrder::BigEndian)
{
    const int inByte = signal.startBit % 8;
    const int before =
        m_isBigEndian ? 7 - inByte : inByte; // bits of the first byte that are not ours
    const int end = before + signal.length;
    m_endByte = quint16(m_firstByte + (end + 7) / 8);
    m_spill = quint8(qMax(0, end - wordBits));
    m_shift = qint8(m_isBigEndian ? wordBits - end : before);
}

int BitField::shiftInFirstEight() const
{
    return m_isBigEndian ? m_shift - 8 * m_firstByte : m_shift + 8 * m_firstByte;
}

quint64 BitField::load(const quint8 *bytes) const
{
    return m_isBigEndian ? qFromBigEndian<quint64>(bytes) : qFromLittleEndian<quint64>(bytes);
}

void BitField::store(quint64 word, quint8 *bytes) const
{
    if (m_isBigEndian)
        qToBigEndian(word, bytes);
    else
        qToLittleEndian(word, bytes);
}

quint64 BitField::extract(const PaddedFrame &frame) const
{
    const quint8 *bytes = frame.bytes + m_firstByte;
    const quint64 word = load(bytes);
    if (m_spill == 0)
        return word >> m_shift & m_mask;
    if (m_isBigEndian)
        return (word << m_spill | bytes[8] >> (8 - m_spill)) & m_mask;
    return (word >> m_shift | quint64(bytes[8]) << (wordBits - m_shift)) & m_mask;
}

void BitField::insert(quint64 raw, PaddedFrame *frame) const
{
    raw &= m_mask;
    quint8 *bytes = frame->bytes + m_firstByte;
    if (m_spill == 0)
        return store((load(bytes) & ~(m_mask << m_shift)) | raw << m_shift, bytes);
    const int kept = 8 - m_spill; // bits of the ninth byte that are not ours
    if (m_isBigEndian) {
        store((load(bytes) & ~(m_mask >> m_spill)) | raw >> m_spill, bytes);
        bytes[8] = quint8((bytes[8] & (0xFF >> m_spill)) | raw << kept);
    } else {
        store((load(bytes) & ~(m_mask << m_shift)) | raw << m_shift, bytes);
        bytes[8] = quint8((bytes[8] & (0xFF << m_spill)) | raw >> (wordBits - m_shift));
    }
}

} // namespace module
