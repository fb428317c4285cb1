#pragma once

#include "quantities.h"

#include <QVector>

#include <array>

/**
 * The quantities of the car over session time, as far as they change. Beyond its limit it drops the
 * oldest values of each.
 */
class QuantityLog
{
public:
    struct Value
    {
        qint64 ms;    // of the session
        double value; // in the unit of the quantity's path; not a number where it went missing
    };

    static constexpr int usualLimit = 1000 * 1000;
    explicit QuantityLog(int limit = usualLimit) : m_limit(limit) {}

    /** Keeps a value that differs from the one before. */
    void add(qint64 ms, module::Quantity quantity, double value);

    const QVector<Value> &values(module::Quantity quantity) const
    {
        return m_values[size_t(quantity)];
    }
    /** How many of the values were dropped; the first one kept is number `dropped()`. */
    qint64 dropped(module::Quantity quantity) const { return m_dropped[size_t(quantity)]; }

private:
    template <typename T>
    using ByQuantity = std::array<T, size_t(module::Quantity::Count)>;

    void dropOldest();

    ByQuantity<QVector<Value>> m_values;
    ByQuantity<qint64> m_dropped = {};
    int m_limit;
    int m_size = 0;
};
