#pragma once

#include "quantities.h"

#include <array>
#include <bitset>
#include <cmath>
#include <limits>

namespace module {

/**
 * The latest value of each quantity. One that has not come, or no longer comes, is unknown. And
 * which of the temperatures the top left gauge shows.
 */
class CarState
{
public:
    CarState() { forgetAll(); }

    /** @param value  not a number for one that has gone missing */
    void set(Quantity quantity, double value)
    {
        m_values[size_t(quantity)] = value;
        m_knew[size_t(quantity)] = m_knew[size_t(quantity)] || !std::isnan(value);
    }
    void forget(Quantity quantity) { set(quantity, std::numeric_limits<double>::quiet_NaN()); }
    void forgetAll()
    {
        m_values.fill(std::numeric_limits<double>::quiet_NaN());
        m_knew.reset();
    }

    Quantity topLeft() const { return m_topLeft; }
    void setTopLeft(Quantity temperature) { m_topLeft = temperature; }

    bool knows(Quantity quantity) const { return !std::isnan(m_values[size_t(quantity)]); }
    bool knowsAny(Quantity first, int count) const
    {
        for (int i = 0; i < count; ++i) {
            if (knows(first + i))
                return true;
        }
        return false;
    }
    /** Whether one of them has come, if only to go missing later. */
    bool knewAny(Quantity first, int count) const
    {
        for (int i = 0; i < count; ++i) {
            if (m_knew[size_t(first + i)])
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
    std::bitset<size_t(Quantity::Count)> m_knew;
    Quantity m_topLeft = Quantity::TransmissionTemperature;
};

} // namespace module
