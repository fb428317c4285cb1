#include "samplesource.h"

#include "live/troublecodes.h"
#include "pagefindings.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace module {

void SampleLog::add(qint64 atMs, Quantity quantity, double value)
{
    const QuantityInfo &info = quantityInfo(quantity);
    if (!(value >= info.lowest && value <= info.highest))
        ++droppedValues;
    else if (samples.size() >= capacity)
        ++beyondCapacity;
    else
        samples.append({atMs, float(value), quantity});
}

void SampleLog::addCodes(qint64 atMs, const QStringList &codes)
{
    static constexpr int mostTexts = 1000;
    if (texts.size() >= mostTexts)
        return;
    texts.append(troubleCodesText(codes));
    texts.last().atMs = atMs;
    remarks.append(codes.isEmpty()
                       ? QStringLiteral("No trouble codes any more")
                       : QStringLiteral("Trouble codes: ") + codes.join(QStringLiteral(", ")));
}

void SampleLog::addMissing(qint64 atMs, Quantity quantity)
{
    if (samples.size() < capacity)
        samples.append({atMs, std::numeric_limits<float>::quiet_NaN(), quantity});
}

SampleSource::SampleSource(SampleLog log)
    : m_log(std::move(log)), m_present(presence()), m_ranges(ranges()), m_mapper(m_present)
{
    seek(0);
}

QVector<bool> SampleSource::presence() const
{
    QVector<bool> present(int(Quantity::Count), false);
    for (const Sample &sample : m_log.samples)
        present[int(sample.quantity)] = true; // also where it goes missing later
    return present;
}

bool SampleSource::isTextNext() const
{
    return m_textIndex < m_log.texts.size() &&
           (m_index >= m_log.samples.size() ||
            m_log.texts[m_textIndex].atMs < m_log.samples[m_index].atMs);
}

/** Finds the next sample or text that changes a page. */
void SampleSource::fill()
{
    while (m_pending.isEmpty() && (isTextNext() || m_index < m_log.samples.size())) {
        if (isTextNext()) {
            m_pending = {m_log.texts[m_textIndex++]};
            return;
        }
        m_pending = m_mapper.map(m_log.samples[m_index++]);
        std::reverse(m_pending.begin(), m_pending.end());
    }
}

qint64 SampleSource::nextDueMs() const
{
    return m_pending.isEmpty() ? -1 : m_pending.constLast().atMs;
}

Emission SampleSource::take()
{
    Emission emission = m_pending.takeLast();
    fill();
    return emission;
}

/** The last sample of each quantity before an index, in order of time. */
QVector<int> SampleSource::latestBefore(int end) const
{
    QVector<bool> wanted = m_present;
    QVector<int> found;
    for (int i = end - 1; i >= 0 && wanted.contains(true); --i) {
        bool &isWanted = wanted[int(m_log.samples[i].quantity)];
        if (isWanted)
            found.prepend(i);
        isWanted = false;
    }
    return found;
}

void SampleSource::seek(qint64 ms)
{
    m_mapper.reset();
    m_pending = m_mapper.opening();
    const auto next =
        std::lower_bound(m_log.samples.cbegin(), m_log.samples.cend(), ms,
                         [](const Sample &sample, qint64 moment) { return sample.atMs < moment; });
    m_index = int(next - m_log.samples.cbegin());
    for (const int index : latestBefore(m_index))
        m_pending += m_mapper.map(m_log.samples[index]);
    m_textIndex = 0;
    while (m_textIndex < m_log.texts.size() && m_log.texts[m_textIndex].atMs < ms)
        m_pending.append(m_log.texts[m_textIndex++]);
    m_pending = lastOfEach(m_pending);
    for (Emission &emission : m_pending)
        emission.atMs = ms;
    std::reverse(m_pending.begin(), m_pending.end());
    fill();
}

QVector<SampleSource::Range> SampleSource::ranges() const
{
    QVector<Range> ranges(static_cast<int>(Quantity::Count));
    for (const Sample &sample : m_log.samples) {
        Range &range = ranges[int(sample.quantity)];
        if (std::isnan(sample.value)) {
            ++range.missing;
            continue;
        }
        const double shown = shownValue(sample.quantity, double(sample.value));
        range.lowest = range.count ? qMin(range.lowest, shown) : shown;
        range.highest = range.count ? qMax(range.highest, shown) : shown;
        ++range.count;
    }
    return ranges;
}

QString SampleSource::Range::text(Quantity quantity) const
{
    QString text = QStringLiteral("%1: %2 samples, %3 to %4 %5")
                       .arg(QLatin1String(quantityInfo(quantity).name))
                       .arg(count)
                       .arg(QString::number(lowest, 'g', 6), QString::number(highest, 'g', 6),
                            shownUnit(quantity))
                       .trimmed();
    if (missing > 0)
        text += missing == 1 ? QStringLiteral("; missing once")
                             : QStringLiteral("; missing %1 times").arg(missing);
    return text;
}

QVector<Sample> SampleSource::samplesOf(qint64 afterMs, qint64 untilMs) const
{
    const auto isLater = [](qint64 ms, const Sample &sample) { return ms < sample.atMs; };
    const auto begin =
        std::upper_bound(m_log.samples.begin(), m_log.samples.end(), afterMs, isLater);
    const auto end = std::upper_bound(begin, m_log.samples.end(), untilMs, isLater);
    return m_log.samples.mid(int(begin - m_log.samples.begin()), int(end - begin));
}

QStringList SampleSource::findings() const
{
    QStringList lines;
    for (int i = 0; i < m_ranges.size(); ++i) {
        if (m_ranges[i].count > 0)
            lines.append(m_ranges[i].text(Quantity(i)));
    }
    return lines + pageFindings(m_present) + remarks();
}

QVector<Findings> SampleSource::findingsByPage() const
{
    QVector<Findings> pages = groupsByPage(m_present);
    for (Findings &page : pages)
        page.present.clear(); // told by the ranges
    Findings others = {QStringLiteral("On no page"), {}, {}};
    for (int i = 0; i < m_ranges.size(); ++i) {
        if (m_ranges[i].count == 0)
            continue;
        const QString name = pageName(quantityInfo(Quantity(i)).page);
        const auto page = std::find_if(pages.begin(), pages.end(), [&name](const Findings &known) {
            return known.heading == name;
        });
        (page == pages.end() ? others : *page).present.append(m_ranges[i].text(Quantity(i)));
    }
    if (!others.present.isEmpty())
        pages.append(others);
    if (!remarks().isEmpty())
        pages.append({QStringLiteral("File"), remarks(), {}});
    return pages;
}

QStringList SampleSource::remarks() const
{
    QStringList lines;
    if (m_log.badLines > 0)
        lines.append(QStringLiteral("%1 lines could not be read").arg(m_log.badLines));
    if (m_log.beyondCapacity > 0)
        lines.append(QStringLiteral("%1 values were not kept: the limit is %2")
                         .arg(m_log.beyondCapacity)
                         .arg(m_log.capacity));
    if (m_log.droppedValues > 0)
        lines.append(
            QStringLiteral("%1 values were missing or out of range").arg(m_log.droppedValues));
    return lines + m_log.remarks;
}

QJsonObject SampleSource::statistics() const
{
    QJsonObject quantities;
    const QVector<Range> &found = m_ranges;
    for (int i = 0; i < found.size(); ++i) {
        if (found[i].count == 0)
            continue;
        const QuantityInfo &info = quantityInfo(Quantity(i));
        // Samples are kept in single precision; three decimals are all they carry.
        const auto rounded = [](double value) { return qRound64(value * 1000.0) / 1000.0; };
        quantities.insert(QLatin1String(info.name), QJsonObject{{"count", found[i].count},
                                                                {"min", rounded(found[i].lowest)},
                                                                {"max", rounded(found[i].highest)},
                                                                {"missing", found[i].missing},
                                                                {"unit", shownUnit(Quantity(i))}});
    }
    QJsonObject statistics = m_log.details;
    statistics.insert("driveSeconds", double(m_log.durationMs) / 1000.0);
    statistics.insert("badLines", m_log.badLines);
    statistics.insert("droppedValues", m_log.droppedValues);
    statistics.insert("beyondCapacity", m_log.beyondCapacity);
    statistics.insert("quantities", quantities);
    return statistics;
}

} // namespace module
