#include "frameplan.h"

#include <algorithm>
#include <numeric>

namespace module {

static constexpr int firstEight = 8;

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
    const int selector = multiplexor < 0 ? -1 : m_selectors.size();
    if (multiplexor >= 0)
        m_selectors.append(stepOf(message.fields.at(multiplexor), multiplexor));
    for (const QVector<int> &members : signalsBelow(message.fields, multiplexor))
        addGroup(message, order, members, selector);
}

void FramePlan::addGroup(const DbcMessage &message, const QVector<int> &order,
                         const QVector<int> &members, int selector)
{
    const int index = m_groups.size();
    const int firstStep = m_steps.size();
    for (const int member : members) {
        if (order.at(member) >= 0)
            m_steps.append(stepOf(message.fields.at(member), order.at(member)));
    }
    m_groups.append({selector, message.fields.at(members.constFirst()).selectedBy, firstStep,
                     m_steps.size(), 0});
    for (const int member : members) {
        if (message.fields.at(member).isMultiplexor)
            addBranches(message, order, member);
    }
    if (m_steps.size() == firstStep)
        m_groups.resize(index); // nothing of this branch is wanted
    else
        m_groups[index].endBranch = m_groups.size();
}

FramePlan::Step FramePlan::stepOf(const DbcSignal &signal, int index)
{
    Step step;
    step.place = BitField(signal);
    step.mask = step.place.mask();
    step.factor = signal.factor;
    step.offset = signal.offset;
    step.signal = index;
    step.endByte = quint8(step.place.endByte());
    step.sign = signBit(signal);
    if (signal.type == DbcSignal::Type::Float)
        step.conversion = Conversion::Float;
    else if (signal.type == DbcSignal::Type::Double)
        step.conversion = Conversion::Double;
    else if (signal.type == DbcSignal::Type::Unsigned && signal.length == 64)
        step.conversion = Conversion::UnsignedWord;
    if (step.endByte > firstEight)
        return step;
    step.order = step.place.isBigEndian();
    step.shift = quint8(step.place.shiftInFirstEight());
    step.isPlain = step.conversion == Conversion::Integer;
    return step;
}

// ---- Decoding -----------------------------------------------------------------------------------

struct FramePlan::Frame
{
    Frame(const quint8 *data, int length) : size(qMin(length, Dbc::LongestFrame))
    {
        if (size > firstEight)
            std::memcpy(padded.bytes, data, size_t(size));
        if (size >= firstEight)
            load(data);
        else
            loadShort(data);
    }

    void load(const quint8 *bytes)
    {
        words[0] = qFromLittleEndian<quint64>(bytes);
        words[1] = qFromBigEndian<quint64>(bytes);
    }
    void loadShort(const quint8 *data)
    {
        quint8 bytes[firstEight] = {};
        std::copy_n(data, size, bytes);
        load(bytes);
    }

    int size;
    quint64 words[2];
    PaddedFrame padded;
};

template <typename To, typename From>
static To bitsAs(From from)
{
    static_assert(sizeof(To) == sizeof(From));
    To to;
    std::memcpy(&to, &from, sizeof to);
    return to;
}

qint64 FramePlan::rawOf(const Step &step, const Frame &frame)
{
    const quint64 raw = step.endByte <= firstEight
                            ? frame.words[step.order] >> step.shift & step.mask
                            : step.place.extract(frame.padded);
    return withSign(raw, step.sign);
}

double FramePlan::valueOf(const Step &step, qint64 raw)
{
    switch (step.conversion) {
    case Conversion::Float:
        return double(bitsAs<float>(quint32(raw))) * step.factor + step.offset;
    case Conversion::Double:
        return bitsAs<double>(raw) * step.factor + step.offset;
    case Conversion::UnsignedWord:
        return double(quint64(raw)) * step.factor + step.offset;
    case Conversion::Integer:
        break;
    }
    return double(raw) * step.factor + step.offset;
}

bool FramePlan::isSelected(const Group &group, const Frame &frame) const
{
    if (group.selector < 0)
        return true;
    const Step &selector = m_selectors.at(group.selector);
    const qint64 value = rawOf(selector, frame);
    return selector.endByte <= frame.size &&
           std::any_of(group.ranges.cbegin(), group.ranges.cend(),
                       [value](const DbcRange &range) { return range.contains(value); });
}

DecodedSignal *FramePlan::decodeGroup(const Group &group, const Frame &frame,
                                      DecodedSignal *decoded) const
{
    const Step *end = m_steps.constData() + group.endStep;
    for (const Step *step = m_steps.constData() + group.firstStep; step != end; ++step) {
        if (step->endByte > frame.size)
            continue;
        decoded->signal = step->signal;
        if (step->isPlain) {
            const quint64 bits = frame.words[step->order] >> step->shift & step->mask;
            decoded->raw = withSign(bits, step->sign);
            decoded->value = double(decoded->raw) * step->factor + step->offset;
        } else {
            decoded->raw = rawOf(*step, frame);
            decoded->value = valueOf(*step, decoded->raw);
        }
        ++decoded;
    }
    return decoded;
}

int FramePlan::decode(const quint8 *data, int size, DecodedSignal *decoded) const
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
