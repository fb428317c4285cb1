#include "livevalues.h"

#include "silence.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace module {

static constexpr float noNumber = std::numeric_limits<float>::quiet_NaN();

LiveValues::LiveValues() : m_values(int(Quantity::Count)) {}

bool LiveValues::add(const Sample &sample, bool isWatched)
{
    static constexpr double share = 0.2; // of the latest period
    Value &value = m_values[int(sample.quantity)];
    if (std::isnan(sample.value)) {
        value.isKnown = false;
        return true;
    }
    const QuantityInfo &info = quantityInfo(sample.quantity);
    if (double(sample.value) < info.lowest || double(sample.value) > info.highest) {
        ++m_droppedValues;
        return false;
    }
    const auto gapMs = double(sample.atMs - value.ms);
    if (value.isKnown)
        value.periodMs += value.periodMs > 0 ? share * (gapMs - value.periodMs) : gapMs;
    value.isKnown = true;
    value.isWatched = isWatched;
    value.value = double(sample.value);
    value.ms = sample.atMs;
    return true;
}

QVector<Sample> LiveValues::missing(qint64 nowMs)
{
    // Until its period is known, a value may be one of the slow ones.
    static constexpr double slowMs = 5000;
    QVector<Sample> samples;
    for (int i = 0; i < m_values.size(); ++i) {
        Value &value = m_values[i];
        const double periodMs = value.periodMs > 0 ? value.periodMs : slowMs;
        const bool isLate = nowMs - value.ms > longestSilenceMs(qint64(periodMs));
        if (!value.isKnown || !value.isWatched || !isLate)
            continue;
        value.isKnown = false;
        samples.append({nowMs, noNumber, Quantity(i)});
    }
    return samples;
}

QVector<Sample> LiveValues::forget(qint64 nowMs, bool onlyWatched)
{
    QVector<Sample> samples;
    for (int i = 0; i < m_values.size(); ++i) {
        Value &value = m_values[i];
        if (!value.isKnown || (onlyWatched && !value.isWatched))
            continue;
        value.isKnown = false;
        value.periodMs = 0;
        samples.append({nowMs, noNumber, Quantity(i)});
    }
    return samples;
}

QVector<Sample> LiveValues::latest() const
{
    QVector<Sample> samples;
    for (int i = 0; i < m_values.size(); ++i) {
        if (m_values[i].isKnown)
            samples.append({m_values[i].ms, float(m_values[i].value), Quantity(i)});
    }
    std::stable_sort(samples.begin(), samples.end(), [](const Sample &left, const Sample &right) {
        return left.atMs < right.atMs;
    });
    return samples;
}

} // namespace module
