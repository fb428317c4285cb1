#pragma once

#include "bitfield.h"

#include <vector>

namespace module {

/** What is done to the bits of one signal. */
struct DecodingStep
{
    enum class Conversion : quint8 { Integer, UnsignedWord, Float, Double };

    quint64 mask = 0;
    quint64 sign = 0; // the sign's bit; 0 for an unsigned number
    double factor = 1;
    double offset = 0;
    int signal = 0;
    quint8 shift = 0; // in the first eight bytes, as most signals are
    bool isBigEndian = false;
    quint8 endByte = 0;
    Conversion conversion = Conversion::Integer;
    BitField place;

    /** @param little, big  the first eight bytes, loaded either way round */
    quint64 bits(quint64 little, quint64 big) const
    {
        return (isBigEndian ? big : little) >> shift & mask;
    }
};

/**
 * A signal as a frame carries it. Valid as long as the plan that has decoded it. Numbers are worked
 * out when they are read, since most signals of a busy bus are ignored.
 */
class DecodedSignal
{
public:
    DecodedSignal() = default;
    DecodedSignal(const DecodingStep *step, quint64 bits) : m_step(step), m_bits(bits) {}

    /** Its index in what the plan was made for. */
    int signal() const { return m_step->signal; }
    /** A whole number; unsigned ones of 64 bits and floating point by their bits. */
    qint64 raw() const { return withSign(m_bits, m_step->sign); }
    /** With factor and offset. */
    double value() const
    {
        const bool isInteger = m_step->conversion == DecodingStep::Conversion::Integer;
        return (isInteger ? double(raw()) : converted()) * m_step->factor + m_step->offset;
    }

private:
    double converted() const;

    const DecodingStep *m_step = nullptr;
    quint64 m_bits = 0;
};

/** How the signals of a message are decoded, worked out once. */
class FramePlan
{
public:
    /** Plans for every signal of a message. */
    explicit FramePlan(const DbcMessage &message);
    /** Plans for some. @param wanted  signals by index; decode() counts in their order */
    FramePlan(const DbcMessage &message, const QVector<int> &wanted);

    /** The most signals that one frame yields. */
    int capacity() const { return m_count; }
    /**
     * Decodes the signals that a frame carries: those whose bytes it has and whose multiplexors
     * select them. Allocates nothing.
     * @param size     up to 64 bytes; what is behind them is not read
     * @param decoded  room for capacity() signals
     * @return how many there were
     */
    int decode(const quint8 *data, int size, DecodedSignal *decoded) const
    {
        if (!m_isSimple || size < FirstEight)
            return decodeGroups(data, size, decoded);
        const DecodingStep *steps = m_steps.data();
        decodeFirstEight(steps, steps + m_count, qFromLittleEndian<quint64>(data),
                         qFromBigEndian<quint64>(data), decoded);
        return m_count;
    }

private:
    static constexpr int FirstEight = 8;
    struct Frame;
    /** Signals that are selected together, with what they select in turn right after them. */
    struct Group
    {
        int selector = -1; // of the selectors' steps; -1 for what is always there
        QVector<DbcRange> ranges;
        int firstStep = 0;
        int endStep = 0;
        bool isShort = false; // all of them lie in the first eight bytes
        int endBranch = 0;    // the next group that does not depend on this one
    };

    static DecodingStep stepOf(const DbcSignal &signal, int index);
    static quint64 bitsOf(const DecodingStep &step, const Frame &frame);
    bool isSelected(const Group &group, const Frame &frame) const;
    static DecodedSignal *decodeFirstEight(const DecodingStep *step, const DecodingStep *end,
                                           quint64 little, quint64 big, DecodedSignal *decoded)
    {
        for (; step != end; ++step)
            *decoded++ = DecodedSignal(step, step->bits(little, big));
        return decoded;
    }
    int decodeGroups(const quint8 *data, int size, DecodedSignal *decoded) const;
    DecodedSignal *decodeGroup(const Group &group, const Frame &frame,
                               DecodedSignal *decoded) const;

    void addBranches(const DbcMessage &message, const QVector<int> &order, int multiplexor);
    void addGroup(const DbcMessage &message, const QVector<int> &order, const QVector<int> &members,
                  int selector);

    std::vector<DecodingStep> m_steps;
    std::vector<DecodingStep> m_selectors;
    QVector<Group> m_groups;
    int m_count = 0;         // of the steps
    bool m_isSimple = false; // eight bytes, and no multiplexor
};

} // namespace module
