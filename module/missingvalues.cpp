#include "missingvalues.h"

#include "silence.h"

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

namespace module {

static constexpr qint64 never = -1;

template <typename T>
using ByQuantity = std::array<T, size_t(Quantity::Count)>;

static qint64 longestSilence(std::vector<int> *gaps)
{
    if (gaps->empty())
        return std::numeric_limits<int>::max();
    const auto usual = gaps->begin() + std::ptrdiff_t((gaps->size() - 1) * 9 / 10);
    std::nth_element(gaps->begin(), usual, gaps->end());
    return longestSilenceMs(*usual);
}

/** Between values of the same time lies no period: the file's clock has whole seconds, perhaps. */
static ByQuantity<qint64> longestSilences(const QVector<Sample> &samples)
{
    ByQuantity<std::vector<int>> gaps;
    ByQuantity<qint64> last;
    last.fill(never);
    for (const Sample &sample : samples) {
        const auto quantity = size_t(sample.quantity);
        if (last[quantity] != never && sample.atMs > last[quantity])
            gaps[quantity].push_back(int(sample.atMs - last[quantity]));
        last[quantity] = sample.atMs;
    }
    ByQuantity<qint64> longest;
    std::transform(gaps.begin(), gaps.end(), longest.begin(),
                   [](std::vector<int> &of) { return longestSilence(&of); });
    return longest;
}

static QVector<Sample> missingValues(const SampleLog &log)
{
    const ByQuantity<qint64> longest = longestSilences(log.samples);
    QVector<Sample> missing;
    ByQuantity<qint64> last;
    last.fill(never);
    const auto passTo = [&missing, &last, &longest](Quantity quantity, qint64 ms) {
        const qint64 missingMs = last[size_t(quantity)] + longest[size_t(quantity)];
        if (last[size_t(quantity)] != never && ms > missingMs)
            missing.append({missingMs, std::numeric_limits<float>::quiet_NaN(), quantity});
        last[size_t(quantity)] = ms;
    };
    for (const Sample &sample : log.samples)
        passTo(sample.quantity, sample.atMs);
    for (int i = 0; i < int(Quantity::Count); ++i)
        passTo(Quantity(i), log.durationMs);
    return missing;
}

void markMissingValues(SampleLog *log)
{
    const auto isEarlier = [](const Sample &left, const Sample &right) {
        return left.atMs < right.atMs;
    };
    QVector<Sample> missing = missingValues(*log);
    std::sort(missing.begin(), missing.end(), isEarlier);
    const int values = log->samples.size();
    log->samples += missing;
    std::inplace_merge(log->samples.begin(), log->samples.begin() + values, log->samples.end(),
                       isEarlier);
}

} // namespace module
