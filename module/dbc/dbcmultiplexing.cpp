#include "dbcmultiplexing.h"

#include "bitfield.h"

#include <algorithm>
#include <bitset>
#include <vector>

namespace module {

// ---- What selects a signal ----------------------------------------------------------------------

/** The only multiplexor that nothing selects itself; -1 for none, -2 for several. */
static int rootMultiplexor(const DbcMessage &message)
{
    int root = -1;
    for (int i = 0; i < message.fields.size(); ++i) {
        const DbcSignal &field = message.fields.at(i);
        if (field.isMultiplexor && field.selectedBy.isEmpty())
            root = root == -1 ? i : -2;
    }
    return root;
}

/** The multiplexors above a signal, the next one first. @return false for a circle */
static bool findSelectors(const DbcMessage &message, int field, QVector<int> *selectors)
{
    for (int above = message.fields.at(field).multiplexor; above >= 0;
         above = message.fields.at(above).multiplexor) {
        if (selectors->size() == deepestMultiplexing)
            return false;
        selectors->append(above);
    }
    return true;
}

using Bits = std::bitset<size_t(Dbc::LongestFrame) * 8>;

static Bits bitsOf(const DbcSignal &signal)
{
    const BitField place(signal);
    PaddedFrame frame;
    place.insert(~quint64(0), &frame);
    Bits bits;
    for (int byte = place.firstByte(); byte < place.endByte(); ++byte)
        bits |= Bits(frame.bytes[byte]) << size_t(byte) * 8;
    return bits;
}

static QString checkSelectors(const DbcMessage &message, int field)
{
    const QString &name = message.fields.at(field).name;
    QVector<int> selectors;
    if (!findSelectors(message, field, &selectors))
        return QStringLiteral("expected at most %1 multiplexors above %2, found more or a circle")
            .arg(deepestMultiplexing)
            .arg(name);
    for (const int selector : selectors) {
        const DbcSignal &above = message.fields.at(selector);
        if ((bitsOf(above) & bitsOf(message.fields.at(field))).any())
            return QStringLiteral(
                       "expected bits of its own for %1, found it to share some with its "
                       "multiplexor %2")
                .arg(name, above.name);
    }
    return QString();
}

std::optional<DbcFinding> resolveMultiplexing(DbcMessage *message)
{
    const int root = rootMultiplexor(*message);
    for (DbcSignal &field : message->fields) {
        const bool isOpen = !field.selectedBy.isEmpty() && field.multiplexor < 0;
        if (isOpen && root < 0)
            return DbcFinding{
                field.line,
                QStringLiteral("expected one multiplexor (M) in %1 for %2, "
                               "found %3")
                    .arg(message->name, field.name,
                         root == -1 ? QStringLiteral("none") : QStringLiteral("several"))};
        if (isOpen)
            field.multiplexor = root;
    }
    for (int i = 0; i < message->fields.size(); ++i) {
        const QString fault = checkSelectors(*message, i);
        if (!fault.isEmpty())
            return DbcFinding{message->fields.at(i).line, fault};
    }
    return std::nullopt;
}

// ---- Overlaps -----------------------------------------------------------------------------------

/** A signal with all that overlapping is decided by. */
struct Extent
{
    int field = 0;
    int firstByte = 0;
    int endByte = 0;
    Bits bits;
    QVector<int> selection; // itself and its multiplexors, each selected by the next
};

static Extent extentOf(const DbcMessage &message, int field)
{
    const DbcSignal &signal = message.fields.at(field);
    const BitField place(signal);
    QVector<int> selection{field};
    findSelectors(message, field, &selection);
    return {field, place.firstByte(), place.endByte(), bitsOf(signal), selection};
}

static bool haveCommonValue(const QVector<DbcRange> &left, const QVector<DbcRange> &right)
{
    return std::any_of(left.cbegin(), left.cend(), [&right](const DbcRange &range) {
        return std::any_of(right.cbegin(), right.cend(), [&range](const DbcRange &other) {
            return range.from <= other.to && other.from <= range.to;
        });
    });
}

/** Whether one multiplexor selects the two, or what selects them, by values that differ. */
static bool areExclusive(const DbcMessage &message, const Extent &left, const Extent &right)
{
    for (const int mine : left.selection) {
        for (const int other : right.selection) {
            const DbcSignal &first = message.fields.at(mine);
            const DbcSignal &second = message.fields.at(other);
            if (first.multiplexor >= 0 && first.multiplexor == second.multiplexor &&
                !haveCommonValue(first.selectedBy, second.selectedBy))
                return true;
        }
    }
    return false;
}

static bool overlap(const DbcMessage &message, const Extent &left, const Extent &right)
{
    return left.firstByte < right.endByte && right.firstByte < left.endByte &&
           (left.bits & right.bits).any() && !areExclusive(message, left, right);
}

QVector<DbcFinding> overlaps(const DbcMessage &message)
{
    std::vector<Extent> extents;
    extents.reserve(size_t(message.fields.size()));
    for (int i = 0; i < message.fields.size(); ++i)
        extents.push_back(extentOf(message, i));
    QVector<DbcFinding> findings;
    for (auto later = extents.cbegin(); later != extents.cend(); ++later) {
        const auto earlier = std::find_if(extents.cbegin(), later, [&](const Extent &extent) {
            return overlap(message, extent, *later);
        });
        if (earlier == later)
            continue;
        const DbcSignal &signal = message.fields.at(later->field);
        findings.append({signal.line, QStringLiteral("signal %1 of %2 shares bits with %3")
                                          .arg(signal.name, message.name,
                                               message.fields.at(earlier->field).name)});
    }
    return findings;
}

} // namespace module
