#include "session/quantitylog.h"

#include <cmath>

static bool isSame(double one, double other)
{
    return one == other || (std::isnan(one) && std::isnan(other));
}

void QuantityLog::add(qint64 ms, module::Quantity quantity, double value)
{
    QVector<Value> &values = m_values[size_t(quantity)];
    const bool isFirst = values.isEmpty();
    if (isFirst ? std::isnan(value) : isSame(values.constLast().value, value))
        return;
    if (m_size >= m_limit)
        dropOldest();
    values.append({ms, value});
    ++m_size;
}

/** A tenth at a time, so that it happens rarely; each keeps what holds now. */
void QuantityLog::dropOldest()
{
    for (size_t i = 0; i < m_values.size(); ++i) {
        QVector<Value> &values = m_values[i];
        const int gone = qMin(values.size() / 10 + 1, qMax(0, values.size() - 1));
        values.remove(0, gone);
        m_dropped[i] += gone;
        m_size -= gone;
    }
}
