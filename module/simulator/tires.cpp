#include "tires.h"

#include "controls.h"
#include "powertrain.h"
#include "units.h"
#include "wire.h"

#include <algorithm>

namespace module {

static constexpr double kelvin = 273.15;
static constexpr double lowPsi = 28;
static constexpr int warmFahrenheit = 100;

static constexpr qint64 punctureMs = 255000;
static constexpr double leakPsiPerSecond = 0.055;
static constexpr Tires::Tire punctured = Tires::RearRight;

void Tires::step(qint64 nowMs, const Powertrain &powertrain, const Controls &controls)
{
    if (nowMs > punctureMs)
        m_coldPsi[punctured] =
            std::max(14.0, m_coldPsi[punctured] - leakPsiPerSecond * Powertrain::stepSeconds);
    const double speed = powertrain.speedKmh();
    for (int tire = 0; tire < Count; ++tire) {
        const auto control = Controls::Control(Controls::TireFrontLeft + tire);
        if (controls.isOverridden(control))
            m_coldPsi[tire] = controls.value(control);
        // A soft tire flexes more; the driven front ones work harder than the rear ones.
        const double flexing = 1 + std::max(0.0, 30 - m_coldPsi[tire]) * 0.09;
        const double work = speed * (tire == FrontLeft || tire == FrontRight ? 0.17 : 0.14);
        const double target = powertrain.ambient() + work * flexing;
        m_celsius[tire] += (target - m_celsius[tire]) * 0.012 * Powertrain::stepSeconds;
    }
}

double Tires::psi(Tire tire) const
{
    static constexpr double atmosphere = 14.7;
    const double absolute =
        (m_coldPsi[tire] + atmosphere) * (m_celsius[tire] + kelvin) / (20 + kelvin);
    return std::max(0.0, absolute - atmosphere);
}

int Tires::fahrenheitOf(Tire tire) const
{
    return qRound(fahrenheit(m_celsius[tire]));
}

bool Tires::isLow(Tire tire) const
{
    return psi(tire) < lowPsi;
}

bool Tires::isWarm(Tire tire) const
{
    return fahrenheitOf(tire) >= warmFahrenheit;
}

Tires::Tire Tires::lowest() const
{
    return Tire(std::min_element(m_coldPsi.begin(), m_coldPsi.end()) - m_coldPsi.begin());
}

int Tires::flags(bool (Tires::*isWarning)(Tire) const) const
{
    static constexpr int bits[Count] = {wire::TireFrontLeft, wire::TireFrontRight,
                                        wire::TireRearRight, wire::TireRearLeft};
    int flags = wire::TireTextsValid;
    for (int tire = 0; tire < Count; ++tire)
        flags |= (this->*isWarning)(Tire(tire)) ? bits[tire] : 0;
    return flags;
}

void Tires::report(EmissionQueue *out, qint64 nowMs, bool engineFault) const
{
    // Around the car; the temperatures from left to right.
    QStringList pressures;
    for (const Tire tire : {FrontLeft, FrontRight, RearRight, RearLeft})
        pressures.append(QStringLiteral("%1 psi").arg(qRound(psi(tire))));
    pressures.append(QString::number(engineFault));
    out->addChange(nowMs, "tirePressureStatus", {byte(flags(&Tires::isLow)), byte(0), pressures});
    out->addChange(nowMs, "tireTemperatureStatus", temperatures());
}

void Tires::repeatWarnings(EmissionQueue *out, qint64 nowMs) const
{
    if (isLow(lowest()))
        out->add(nowMs, "tireTemperatureStatus", temperatures());
}

/** Pressures are shown white whatever their flags, so the temperature marks a soft tire. */
QVariantList Tires::temperatures() const
{
    QStringList texts;
    for (const Tire tire : {FrontLeft, FrontRight, RearLeft, RearRight})
        texts.append(QString::number(fahrenheitOf(tire)) + QLatin1Char('F'));
    return {byte(flags(&Tires::isSoftOrWarm)), byte(0), texts};
}

} // namespace module
