#pragma once

#include "quantities.h"

#include <array>
#include <cmath>
#include <limits>

namespace module {

/** The latest value of each quantity. One that has not come, or no longer comes, is unknown. */
class CarState
{
public:
    CarState() { clear(); }

    void set(const Sample &sample) { m_values[size_t(sample.quantity)] = double(sample.value); }
    void clear() { m_values.fill(std::numeric_limits<double>::quiet_NaN()); }

    bool knows(Quantity quantity) const { return !std::isnan(m_values[size_t(quantity)]); }
    bool knowsAny(Quantity first, int count) const
    {
        for (int i = 0; i < count; ++i) {
            if (knows(first + i))
                return true;
        }
        return false;
    }
    /** Not a number while it is unknown. */
    double value(Quantity quantity) const { return m_values[size_t(quantity)]; }
    double valueOr(Quantity quantity, double other) const
    {
        return knows(quantity) ? value(quantity) : other;
    }
    /** A flag that is known and true. */
    bool isOn(Quantity quantity) const { return valueOr(quantity, 0) > 0.5; }

private:
    std::array<double, size_t(Quantity::Count)> m_values;
};

} // namespace module
