#include "frameplan.h"

#include <algorithm>
#include <numeric>

namespace module {

// ---- Planning -----------------------------------------------------------------------------------

static QVector<int> everySignal(const DbcMessage &message)
{
    QVector<int> indices(message.fields.size());
    std::iota(indices.begin(), indices.end(), 0);
    return indices;
}

FramePlan::FramePlan(const DbcMessage &message) : FramePlan(message, everySignal(message)) {}

FramePlan::FramePlan(const DbcMessage &message, const QVector<int> &wanted)
{
    QVector<int> order(message.fields.size(), -1);
    for (int i = 0; i < wanted.size(); ++i)
        order[wanted.at(i)] = i;
    addBranches(message, order, -1);
    m_count = int(m_steps.size());
    m_isSimple =
        m_groups.size() == 1 && m_groups.constFirst().selector < 0 && m_groups.constFirst().isShort;
}

static bool areSelectedAlike(const DbcSignal &left, const DbcSignal &right)
{
    return std::equal(left.selectedBy.cbegin(), left.selectedBy.cend(), right.selectedBy.cbegin(),
                      right.selectedBy.cend(), [](const DbcRange &one, const DbcRange &other) {
                          return one.from == other.from && one.to == other.to;
                      });
}

/** The signals below a multiplexor, or below none, a list for each set of values. */
static QVector<QVector<int>> signalsBelow(const QVector<DbcSignal> &fields, int multiplexor)
{
    QVector<QVector<int>> groups;
    for (int i = 0; i < fields.size(); ++i) {
        if (fields.at(i).multiplexor != multiplexor)
            continue;
        const auto group =
            std::find_if(groups.begin(), groups.end(), [&fields, i](const QVector<int> &members) {
                return areSelectedAlike(fields.at(members.constFirst()), fields.at(i));
            });
        if (group == groups.end())
            groups.append(QVector<int>{i});
        else
            group->append(i);
    }
    return groups;
}

void FramePlan::addBranches(const DbcMessage &message, const QVector<int> &order, int multiplexor)
{
    const int selector = multiplexor < 0 ? -1 : int(m_selectors.size());
    if (multiplexor >= 0)
        m_selectors.push_back(stepOf(message.fields.at(multiplexor), multiplexor));
    for (const QVector<int> &members : signalsBelow(message.fields, multiplexor))
        addGroup(message, order, members, selector);
}

void FramePlan::addGroup(const DbcMessage &message, const QVector<int> &order,
                         const QVector<int> &members, int selector)
{
    const int index = m_groups.size();
    const auto firstStep = m_steps.size();
    bool isShort = true;
    for (const int member : members) {
        if (order.at(member) < 0)
            continue;
        m_steps.push_back(stepOf(message.fields.at(member), order.at(member)));
        isShort = isShort && m_steps.back().endByte <= FirstEight;
    }
    m_groups.append({selector, message.fields.at(members.constFirst()).selectedBy, int(firstStep),
                     int(m_steps.size()), isShort, 0});
    for (const int member : members) {
        if (message.fields.at(member).isMultiplexor)
            addBranches(message, order, member);
    }
    if (m_steps.size() == firstStep)
        m_groups.resize(index); // nothing of this branch is wanted
    else
        m_groups[index].endBranch = m_groups.size();
}

DecodingStep FramePlan::stepOf(const DbcSignal &signal, int index)
{
    using Conversion = DecodingStep::Conversion;
    DecodingStep step;
    step.place = BitField(signal);
    step.mask = step.place.mask();
    step.sign = signBit(signal);
    step.factor = signal.factor;
    step.offset = signal.offset;
    step.signal = index;
    step.isBigEndian = step.place.isBigEndian();
    step.endByte = quint8(step.place.endByte());
    if (step.endByte <= FirstEight)
        step.shift = quint8(step.place.shiftInFirstEight());
    if (signal.type == DbcSignal::Type::Float)
        step.conversion = Conversion::Float;
    else if (signal.type == DbcSignal::Type::Double)
        step.conversion = Conversion::Double;
    else if (signal.type == DbcSignal::Type::Unsigned && signal.length == 64)
        step.conversion = Conversion::UnsignedWord;
    return step;
}

// ---- Decoding -----------------------------------------------------------------------------------

struct FramePlan::Frame
{
    Frame(const quint8 *data, int length) : size(qBound(0, length, Dbc::LongestFrame))
    {
        std::copy_n(data, size, padded.bytes);
        little = qFromLittleEndian<quint64>(padded.bytes);
        big = qFromBigEndian<quint64>(padded.bytes);
    }

    int size;
    quint64 little; // the first eight bytes, either way round
    quint64 big;
    PaddedFrame padded;
};

quint64 FramePlan::bitsOf(const DecodingStep &step, const Frame &frame)
{
    return step.endByte <= FirstEight ? step.bits(frame.little, frame.big)
                                      : step.place.extract(frame.padded);
}

template <typename To, typename From>
static To bitsAs(From from)
{
    static_assert(sizeof(To) == sizeof(From));
    To to;
    std::memcpy(&to, &from, sizeof to);
    return to;
}

double DecodedSignal::converted() const
{
    switch (m_step->conversion) {
    case DecodingStep::Conversion::Float:
        return double(bitsAs<float>(quint32(m_bits)));
    case DecodingStep::Conversion::Double:
        return bitsAs<double>(m_bits);
    case DecodingStep::Conversion::UnsignedWord:
        return double(m_bits);
    case DecodingStep::Conversion::Integer:
        break;
    }
    return double(raw());
}

bool FramePlan::isSelected(const Group &group, const Frame &frame) const
{
    if (group.selector < 0)
        return true;
    const DecodingStep &selector = m_selectors[size_t(group.selector)];
    const qint64 value = withSign(bitsOf(selector, frame), selector.sign);
    return selector.endByte <= frame.size &&
           std::any_of(group.ranges.cbegin(), group.ranges.cend(),
                       [value](const DbcRange &range) { return range.contains(value); });
}

DecodedSignal *FramePlan::decodeGroup(const Group &group, const Frame &frame,
                                      DecodedSignal *decoded) const
{
    const DecodingStep *step = m_steps.data() + group.firstStep;
    const DecodingStep *end = m_steps.data() + group.endStep;
    if (group.isShort && frame.size >= FirstEight)
        return decodeFirstEight(step, end, frame.little, frame.big, decoded);
    for (; step != end; ++step) {
        if (step->endByte <= frame.size)
            *decoded++ = DecodedSignal(step, bitsOf(*step, frame));
    }
    return decoded;
}

int FramePlan::decodeGroups(const quint8 *data, int size, DecodedSignal *decoded) const
{
    const Frame frame(data, size);
    DecodedSignal *next = decoded;
    for (int i = 0; i < m_groups.size();) {
        const Group &group = m_groups.at(i);
        const bool isCarried = isSelected(group, frame);
        if (isCarried)
            next = decodeGroup(group, frame, next);
        i = isCarried ? i + 1 : group.endBranch;
    }
    return int(next - decoded);
}

} // namespace module
