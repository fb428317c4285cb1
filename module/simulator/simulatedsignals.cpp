#include "pagesignals.h"
#include "simulatedcar.h"

#include <QDateTime>

namespace module {

static constexpr qint64 propertiesMs = 1000;
static constexpr qint64 clockMs = 1000;

struct EngineQuantity
{
    Quantity quantity;
    double (Powertrain::*value)() const;
};

static constexpr EngineQuantity engineQuantities[] = {
    {Quantity::EngineSpeed, &Powertrain::rpm},
    {Quantity::EngineLoad, &Powertrain::loadPercent},
    {Quantity::CoolantTemperature, &Powertrain::coolant},
    {Quantity::IntakeTemperature, &Powertrain::intake},
    {Quantity::AmbientTemperature, &Powertrain::ambient},
    {Quantity::OilTemperature, &Powertrain::oil},
    {Quantity::TransmissionTemperature, &Powertrain::transmission},
    {Quantity::VehicleSpeed, &Powertrain::speedKmh},
    {Quantity::Voltage, &Powertrain::volts},
};

void SimulatedCar::handOver()
{
    for (const EngineQuantity &row : engineQuantities)
        m_car.set(row.quantity, (m_powertrain.*row.value)());
    m_car.set(Quantity::Gear, m_powertrain.isReversing() ? -1 : m_powertrain.gear());
    m_tires.handOver(&m_car);
    m_body.handOver(&m_car);
    m_manoeuvre.handOver(&m_car);
}

/** It has no past: those of now. */
QVector<Sample> SimulatedCar::samplesOf(qint64, qint64 untilMs) const
{
    QVector<Sample> samples;
    for (int i = 0; i < int(Quantity::Count); ++i)
        samples.append({untilMs, float(m_car.value(Quantity(i))), Quantity(i)});
    return samples;
}

void SimulatedCar::report()
{
    handOver();
    report(simulatedGauges);
    m_gauges.report(&m_out, m_nowMs, m_powertrain);
    report(simulatedVehicle);
    m_body.report(&m_out, m_nowMs);
    m_manoeuvre.report(&m_out, m_nowMs, m_car);
    m_prompts.report(&m_out, m_nowMs);
    if (m_reportsClock && m_nowMs % clockMs == 0)
        reportClock(m_nowMs);
    reportProperties();
}

void SimulatedCar::report(const QVector<PacedSignal> &rows)
{
    for (const PacedSignal &row : rows) {
        if (m_nowMs % row.everyMs == 0)
            m_out.addChange(m_nowMs, row.signal.name, emissionOf(row.signal, m_car).arguments);
    }
}

/**
 * The list rounds the voltage to whole volts and shows a soft tire white as long as it is cool, so
 * the more exact signals follow it at once.
 */
void SimulatedCar::reportProperties()
{
    const auto add = [this](const PageSignal &signal) {
        m_out.add(m_nowMs, signal.name, emissionOf(signal, m_car).arguments);
    };
    if (m_nowMs % propertiesMs != 0) {
        m_out.addChange(m_nowMs, batterySignal.name, emissionOf(batterySignal, m_car).arguments);
        return;
    }
    add(simulatedProperties);
    add(batterySignal);
    if (m_tires.isLow(m_tires.lowest()))
        add(simulatedTireTemperatures);
}

/** Month, day, year, hour, minute and second, digit by digit. */
void SimulatedCar::reportClock(qint64 atMs)
{
    static const QDateTime departure(QDate(2026, 3, 14), QTime(8, 15), Qt::UTC);
    const QString digits = departure.addMSecs(atMs).toString(QStringLiteral("MMddyyHHmmss"));
    m_out.add(atMs, "TimeInfo", {digits.split(QString(), Qt::SkipEmptyParts)});
}

/** Replaces a report that is still planned: it is older than this one, whatever its time. */
void SimulatedCar::reportClimate(qint64 atMs)
{
    static const QByteArray signal = "NordaClimateCtrlStatusNotify";
    m_out.cancel(signal);
    m_out.add(atMs, signal, {QVariant::fromValue(m_climate.takeReport())});
}

} // namespace module
