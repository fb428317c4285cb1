#pragma once

#include "bitfield.h"

namespace module {

/** A signal as a frame carries it. */
struct DecodedSignal
{
    int signal = 0;   ///< its index in what the plan was made for
    qint64 raw = 0;   ///< a whole number; unsigned ones of 64 bits and floating point by their bits
    double value = 0; ///< with factor and offset
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
    int capacity() const { return m_steps.size(); }
    /**
     * Decodes the signals that a frame carries: those whose bytes it has and whose multiplexors
     * select them. Allocates nothing.
     * @param size     up to 64 bytes; what is behind them is not read
     * @param decoded  room for capacity() signals
     * @return how many there were
     */
    int decode(const quint8 *data, int size, DecodedSignal *decoded) const;

private:
    enum class Conversion : quint8 { Integer, UnsignedWord, Float, Double };
    struct Frame;

    /** One signal. Most lie in the first eight bytes, which are loaded once, either way round. */
    struct Step
    {
        quint64 mask = 0;
        quint64 sign = 0; // the sign's bit; 0 for an unsigned number
        double factor = 1;
        double offset = 0;
        int signal = 0;
        quint8 order = 0; // which of the two loaded numbers
        quint8 shift = 0;
        quint8 endByte = 0;
        bool isPlain = false; // an integer in the first eight bytes
        Conversion conversion = Conversion::Integer;
        BitField place;
    };
    /** Signals that are selected together, with what they select in turn right after them. */
    struct Group
    {
        int selector = -1; // of the selectors' steps; -1 for what is always there
        QVector<DbcRange> ranges;
        int firstStep = 0;
        int endStep = 0;
        int endBranch = 0; // the next group that does not depend on this one
    };

    static Step stepOf(const DbcSignal &signal, int index);
    static double valueOf(const Step &step, qint64 raw);
    static qint64 rawOf(const Step &step, const Frame &frame);
    bool isSelected(const Group &group, const Frame &frame) const;
    DecodedSignal *decodeGroup(const Group &group, const Frame &frame,
                               DecodedSignal *decoded) const;

    void addBranches(const DbcMessage &message, const QVector<int> &order, int multiplexor);
    void addGroup(const DbcMessage &message, const QVector<int> &order, const QVector<int> &members,
                  int selector);

    QVector<Step> m_steps;
    QVector<Step> m_selectors;
    QVector<Group> m_groups;
};

} // namespace module
