#include "busdecoder.h"

#include "mapcheck.h"

#include <limits>

namespace module {

std::unique_ptr<BusDecoder> BusDecoder::open(const CarFiles &car, QString *error)
{
    auto dbc = Dbc::read(car.dbc, error);
    const auto map = dbc ? SignalMap::read(car.map, error) : std::nullopt;
    if (!map)
        return nullptr;
    const SignalBinding binding = bindSignals(*map, *dbc);
    if (binding.links.isEmpty()) { // a map for another car
        *error = QStringLiteral("%1: %2").arg(
            car.map, missingSignal(map->entries().at(binding.missing.constFirst())));
        return nullptr;
    }
    return std::unique_ptr<BusDecoder>(new BusDecoder(*std::move(dbc), *map, binding));
}

BusDecoder::BusDecoder(Dbc dbc, const SignalMap &map, const SignalBinding &binding)
    : m_dbc(std::move(dbc))
    , m_decoder(map, m_dbc, binding)
    , m_quantities(shownQuantities(map, binding))
{
    for (const int entry : binding.missing)
        m_remarks.append(missingSignal(map.entries().at(entry)));
    m_remarks += binding.remarks;
}

const QVector<Sample> &BusDecoder::decode(qint64 ms, quint32 id, const QByteArray &data)
{
    m_knownFrames += m_dbc.indexOf(id) >= 0;
    const auto *bytes = reinterpret_cast<const quint8 *>(data.constData());
    return samplesOf(ms, m_decoder.decode(ms, id, bytes, data.size()));
}

const QVector<Sample> &BusDecoder::missing(qint64 ms)
{
    return samplesOf(ms, m_decoder.missing(ms));
}

const QVector<Sample> &BusDecoder::samplesOf(qint64 ms, const QVector<PathValue> &values)
{
    static constexpr float noNumber = std::numeric_limits<float>::quiet_NaN();
    m_samples.resize(0); // keeps its memory
    for (const PathValue &path : values) {
        const Quantity quantity = m_quantities.at(path.entry);
        if (quantity == Quantity::Count)
            continue;
        const auto value = quantityValue(quantity, path.value);
        if (value || !path.value.isValid())
            m_samples.append({ms, value ? float(*value) : noNumber, quantity});
        else
            ++m_droppedValues;
    }
    return m_samples;
}

QVector<bool> BusDecoder::present() const
{
    QVector<bool> present(int(Quantity::Count), false);
    for (const Quantity quantity : m_quantities) {
        if (quantity != Quantity::Count)
            present[int(quantity)] = true;
    }
    return present;
}

} // namespace module
