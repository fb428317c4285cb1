#include "obdmapper.h"

#include "units.h"

#include <QtMath>

namespace module {

struct Corner
{
    const char *signal;
    Quantity quantity;
    int fullScale;
};

// The top left corner takes the first of its candidates that the car reports.
static constexpr Corner corners[] = {
    {"gaugeTRValueDualNotify", Quantity::CoolantTemperature, 250},
    {"gaugeBLValueDualNotify", Quantity::IntakeTemperature, 250},
    {"gaugeBRValueDualNotify", Quantity::EngineLoad, 100},
};
static constexpr int topLeftFullScale = 250;

struct Candidate
{
    Quantity quantity;
    const char *title;
};

static constexpr Candidate topLeftCandidates[] = {
    {Quantity::TransmissionTemperature, "Transmission Temp"},
    {Quantity::OilTemperature, "Oil Temp"},
    {Quantity::AmbientTemperature, "Ambient Temp"},
};

static QVariant byte(double value, int fullScale)
{
    return QVariant::fromValue(uchar(qBound(0, qRound(value), fullScale)));
}

ObdMapper::ObdMapper(const QVector<bool> &present) : m_present(present)
{
    for (const Candidate &candidate : topLeftCandidates) {
        if (m_topLeft == Quantity::Count && isPresent(candidate.quantity))
            m_topLeft = candidate.quantity;
    }
}

QVector<Emission> ObdMapper::opening() const
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

static QVariantList cornerArguments(const Sample &sample, int fullScale)
{
    const double shown = shownValue(sample.quantity, double(sample.value));
    return {QString::number(qRound(shown)), QString::fromUtf8(quantityInfo(sample.quantity).unit),
            byte(shown, fullScale)};
}

QVariantList ObdMapper::arguments(const Sample &sample, QByteArray *signal) const
{
    const double value = double(sample.value);

    if (sample.quantity == m_topLeft) {
        *signal = "gaugeTLValueDualNotify";
        return cornerArguments(sample, topLeftFullScale);
    }
    for (const Corner &corner : corners) {
        if (corner.quantity == sample.quantity) {
            *signal = corner.signal;
            return cornerArguments(sample, corner.fullScale);
        }
    }
    switch (sample.quantity) {
    case Quantity::EngineSpeed:
        *signal = "centerGaugeValueNotify";
        return {QString::number(qFloor(value)), QStringLiteral("RPM"), byte(value / 100, 100)};
    case Quantity::VehicleSpeed:
        *signal = "gauTopBarTextNotify";
        return {QStringLiteral("%1 km/h   %2 mph").arg(qRound(value)).arg(qRound(miles(value)))};
    case Quantity::Voltage:
        *signal = "batteryVoltage";
        return {QString::number(value, 'f', 1) + QLatin1Char('V')}; // five characters are shown
    default:
        return {};
    }
}

std::optional<Emission> ObdMapper::map(const Sample &sample)
{
    QByteArray signal;
    const QVariantList values = arguments(sample, &signal);
    if (signal.isEmpty() || m_last.value(signal) == values)
        return std::nullopt;
    m_last.insert(signal, values);
    return Emission{sample.atMs, signal, values};
}

} // namespace module
