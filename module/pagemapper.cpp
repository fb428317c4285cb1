#include "pagemapper.h"

#include "pagesignals.h"

#include <QSet>

namespace module {

PageMapper::PageMapper(const QVector<bool> &present) : m_rows(int(Quantity::Count))
{
    for (const Quantity temperature : topLeftTemperatures) {
        if (!present.value(int(m_car.topLeft())) && present.value(int(temperature)))
            m_car.setTopLeft(temperature);
    }
    for (int row = 0; row < pageSignals.size(); ++row) {
        const PageSignal &signal = pageSignals.at(row);
        for (int i = 0; i < signal.count; ++i) {
            const Quantity quantity = signal.first + i;
            if (!topLeftTemperatures.contains(quantity) || quantity == m_car.topLeft())
                m_rows[int(quantity)].append(row);
        }
    }
}

QVector<Emission> PageMapper::opening() const
{
    return {{0, "gaugeTitlesNotify", gaugeTitles(m_car)}};
}

QVector<Emission> PageMapper::map(const Sample &sample)
{
    QVector<Emission> emissions;
    m_car.set(sample.quantity, double(sample.value));
    for (const int row : m_rows.at(int(sample.quantity)))
        emitRow(row, sample.atMs, false, &emissions);
    return emissions;
}

/** @param again  also when it is what was sent last */
void PageMapper::emitRow(int row, qint64 atMs, bool again, QVector<Emission> *out)
{
    const PageSignal &signal = pageSignals.at(row);
    const Emission emission = emissionOf(signal, m_car);
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
    m_car.forgetAll();
    m_last.clear();
}

QVector<Emission> lastOfEach(const QVector<Emission> &emissions)
{
    QVector<Emission> last;
    QSet<QByteArray> found;
    for (auto it = emissions.crbegin(); it != emissions.crend(); ++it) {
        if (!found.contains(it->signal))
            last.prepend(*it);
        found.insert(it->signal);
    }
    return last;
}

} // namespace module
