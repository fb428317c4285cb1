#include "broadcast/mapinverse.h"

#include <algorithm>
#include <cmath>

namespace ecu {

using module::DbcSignal;
using module::DbcValue;
using module::MappedValue;
using module::Quantity;
using module::SignalTransform;

/** The values that a signal can have, in equal steps. */
struct Steps
{
    double first;
    double step;
    quint64 last;

    double at(quint64 index) const { return first + double(index) * step; }
};

static Steps stepsOf(const DbcSignal &signal)
{
    static constexpr quint64 many = quint64(1) << 32;
    const bool isLimited = signal.minimum < signal.maximum;
    if (signal.type == DbcSignal::Type::Float || signal.type == DbcSignal::Type::Double) {
        const double lowest = isLimited ? signal.minimum : -1e6;
        const double highest = isLimited ? signal.maximum : 1e6;
        return {lowest, (highest - lowest) / double(many), many};
    }
    const bool isSigned = signal.type == DbcSignal::Type::Signed;
    const double lowestRaw = isSigned ? -std::ldexp(1.0, signal.length - 1) : 0;
    return {lowestRaw * signal.factor + signal.offset, signal.factor,
            ~quint64(0) >> (64 - signal.length)};
}

/** The step that a formula, which rises or falls, takes closest to a value. */
static std::optional<double> closestStep(const Steps &steps, const SignalTransform &transform,
                                         double value)
{
    const auto result = [&](quint64 index) -> std::optional<double> {
        const double x = steps.at(index);
        return transform.math ? transform.math->evaluate(x) : x;
    };
    const auto first = result(0);
    const auto last = result(steps.last);
    if (!first || !last)
        return std::nullopt;
    const bool rises = *last >= *first;
    quint64 low = 0;
    quint64 high = steps.last; // the result at `high` is at or past the value, as far as any is
    while (low < high) {
        const quint64 middle = low + (high - low) / 2;
        const auto found = result(middle);
        if (!found)
            return std::nullopt;
        if (rises ? *found >= value : *found <= value)
            high = middle;
        else
            low = middle + 1;
    }
    const auto distance = [&](quint64 index) {
        return std::abs(result(index).value_or(HUGE_VAL) - value);
    };
    return steps.at(low > 0 && distance(low - 1) < distance(low) ? low - 1 : low);
}

/** A row's own end: a number, or the value that a name stands for. */
static std::optional<double> valueBefore(const MappedValue &row, const DbcSignal &signal)
{
    if (row.from.type() != QVariant::String)
        return row.from.toDouble();
    const QString name = row.from.toString();
    const auto found =
        std::find_if(signal.values.begin(), signal.values.end(),
                     [&name](const DbcValue &candidate) { return candidate.name == name; });
    if (found == signal.values.end())
        return std::nullopt;
    return double(found->raw) * signal.factor + signal.offset;
}

static std::optional<double> closestRow(const QVector<MappedValue> &rows, const DbcSignal &signal,
                                        Quantity quantity, double value)
{
    std::optional<double> closest;
    double least = HUGE_VAL;
    for (const MappedValue &row : rows) {
        const auto before = valueBefore(row, signal);
        const auto after = module::quantityValue(quantity, row.to);
        if (!before || !after || std::abs(*after - value) >= least)
            continue;
        least = std::abs(*after - value);
        closest = before;
    }
    return closest;
}

std::optional<double> signalValue(const module::MapEntry &entry, const DbcSignal &signal,
                                  Quantity quantity, double value)
{
    const SignalTransform &transform = entry.transform;
    if (!transform.mapping.isEmpty())
        return closestRow(transform.mapping, signal, quantity, value);
    return closestStep(stepsOf(signal), transform, value);
}

} // namespace ecu
