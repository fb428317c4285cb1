#pragma once

#include "dbc.h"

#include <QtEndian>

#include <cstring>

namespace module {

/** A frame's data with zeros behind, so that eight bytes can be loaded at each of its own. */
struct PaddedFrame
{
    quint8 bytes[Dbc::LongestFrame + 8] = {};
};

/** The bit of a raw value that is its sign; 0 for one without. */
inline quint64 signBit(const DbcSignal &signal)
{
    return signal.type == DbcSignal::Type::Signed ? quint64(1) << (signal.length - 1) : 0;
}

inline qint64 withSign(quint64 raw, quint64 signBit)
{
    return qint64((raw ^ signBit) - signBit);
}

/** Where the bits of a signal lie: one load of eight bytes, one shift and one mask in most cases.
 */
class BitField
{
public:
    BitField() = default;
    explicit BitField(const DbcSignal &signal);

    int firstByte() const { return m_firstByte; }
    /** How many bytes a frame must have to carry the signal. */
    int endByte() const { return m_endByte; }
    bool isBigEndian() const { return m_isBigEndian; }
    quint64 mask() const { return m_mask; }
    /** Where the lowest bit lies once the first eight bytes of a frame are loaded as one number. */
    int shiftInFirstEight() const;

    quint64 extract(const PaddedFrame &frame) const;
    void insert(quint64 raw, PaddedFrame *frame) const;

private:
    quint64 load(const quint8 *bytes) const;
    void store(quint64 word, quint8 *bytes) const;

    quint64 m_mask = 0;
    quint16 m_firstByte = 0;
    quint16 m_endByte = 0;
    qint8 m_shift = 0;  // of the loaded number
    quint8 m_spill = 0; // bits in a ninth byte; a big-endian field is not shifted right then
    bool m_isBigEndian = false;
};

} // namespace module
