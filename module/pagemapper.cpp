#include "pagemapper.h"

#include "pagesignals.h"
#include "unknownvalues.h"

namespace module {

struct Candidate
{
    Quantity quantity;
    const char *title;
};

// The top left gauge takes the first of its candidates that the car reports.
static constexpr Candidate topLeftCandidates[] = {
    {Quantity::TransmissionTemperature, "Transmission Temp"},
    {Quantity::OilTemperature, "Oil Temp"},
    {Quantity::AmbientTemperature, "Ambient Temp"},
};

static bool isCandidate(Quantity quantity)
{
    return std::any_of(
        std::begin(topLeftCandidates), std::end(topLeftCandidates),
        [quantity](const Candidate &candidate) { return candidate.quantity == quantity; });
}

PageMapper::PageMapper(const QVector<bool> &present) : m_rows(int(Quantity::Count))
{
    chooseTopLeft(present);
    for (int row = 0; row < pageSignals.size(); ++row) {
        const PageSignal &signal = pageSignals.at(row);
        for (int i = 0; i < signal.count; ++i) {
            if (!isCandidate(signal.first) || signal.first == m_topLeft)
                m_rows[int(signal.first + i)].append(row);
        }
    }
}

void PageMapper::chooseTopLeft(const QVector<bool> &present)
{
    for (const Candidate &candidate : topLeftCandidates) {
        if (m_topLeft == Quantity::Count && present.value(int(candidate.quantity)))
            m_topLeft = candidate.quantity;
    }
}

QVector<Emission> PageMapper::opening() const
{
    QString topLeftTitle = QLatin1String(topLeftCandidates[0].title);
    for (const Candidate &candidate : topLeftCandidates) {
        if (candidate.quantity == m_topLeft)
            topLeftTitle = QLatin1String(candidate.title);
    }
    const QStringList titles = {QStringLiteral("Tachometer"), topLeftTitle,
                                QStringLiteral("Coolant Temp"), QStringLiteral("Intake Air Temp"),
                                QStringLiteral("Engine Calculated Load")};
    return {{0, "gaugeTitlesNotify", {titles}}};
}

QVector<Emission> PageMapper::map(const Sample &sample)
{
    QVector<Emission> emissions;
    m_car.set(sample);
    for (const int row : m_rows.at(int(sample.quantity)))
        emitRow(row, sample.atMs, false, &emissions);
    return emissions;
}

/** @param again  also when it is what was sent last */
void PageMapper::emitRow(int row, qint64 atMs, bool again, QVector<Emission> *out)
{
    const PageSignal &signal = pageSignals.at(row);
    const bool isKnown = m_car.knowsAny(signal.first, signal.count);
    const Emission emission =
        isKnown ? Emission{atMs, signal.name, signal.arguments(m_car)} : unknownValue(signal.name);
    Emission &last = m_last[signal.name];
    const bool isSame = emission.signal == last.signal && emission.arguments == last.arguments;
    if (emission.signal.isEmpty() || (isSame && !again))
        return;
    last = emission;
    out->append(emission);
    out->last().atMs = atMs;
    if (signal.disturbsNext)
        emitRow(row + 1, atMs, true, out);
}

void PageMapper::reset()
{
    m_car.clear();
    m_last.clear();
}

} // namespace module
