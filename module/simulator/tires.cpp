#include "tires.h"

#include "carstate.h"
#include "controls.h"
#include "powertrain.h"
#include "units.h"

#include <algorithm>

namespace module {

static constexpr double kelvin = 273.15;
static constexpr double lowPsi = 28;

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

bool Tires::isLow(Tire tire) const
{
    return psi(tire) < lowPsi;
}

Tires::Tire Tires::lowest() const
{
    return Tire(std::min_element(m_coldPsi.begin(), m_coldPsi.end()) - m_coldPsi.begin());
}

void Tires::handOver(CarState *car) const
{
    for (int tire = 0; tire < Count; ++tire) {
        car->set(Quantity::TirePressureFrontLeft + tire, psi(Tire(tire)) * kilopascalPerPsi);
        car->set(Quantity::TireLowFrontLeft + tire, isLow(Tire(tire)));
        car->set(Quantity::TireTemperatureFrontLeft + tire, m_celsius[tire]);
    }
}

} // namespace module
