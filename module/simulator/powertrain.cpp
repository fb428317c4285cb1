#include "powertrain.h"

#include "units.h"

#include <algorithm>
#include <cmath>

namespace module {

static constexpr double dt = Powertrain::stepSeconds;

// Engine speed in rpm for each km/h, by gear.
static constexpr double ratios[] = {0, 128, 78, 53, 40, 31, 25};
static constexpr int topGear = 6;

static double towards(double value, double target, double perSecond)
{
    return value + (target - value) * std::min(1.0, perSecond * dt);
}

double Powertrain::noise(double amplitude)
{
    // Not a distribution of the standard library: their results differ between implementations.
    const double unit = double(m_random() - m_random.min()) / double(m_random.max());
    return (2 * unit - 1) * amplitude;
}

void Powertrain::step(const DriverWish &wish, const Controls &controls)
{
    m_controls = controls;
    m_running = wish.engineOn;
    m_reversing = wish.reverse;
    move(wish);
    shift(wish);
    turn(wish);
    heat();
    charge(wish);
}

int Powertrain::gear() const
{
    const int value = m_controls.value(Controls::Gear);
    return value == Controls::Automatic ? m_gear : qMax(0, value - Controls::FirstGear + 1);
}

bool Powertrain::isReversing() const
{
    const int value = m_controls.value(Controls::Gear);
    return value == Controls::Automatic ? m_reversing : value == Controls::Reverse;
}

double Powertrain::reading(Controls::Control control, double value) const
{
    return m_controls.isOverridden(control) ? celsius(m_controls.value(control)) : value;
}

void Powertrain::move(const DriverWish &wish)
{
    if (wish.creeping && m_running) {
        m_acceleration = std::clamp((wish.speedKmh - m_speedKmh) / dt, -8.0, 2.0);
        m_speedKmh = std::max(0.0, m_speedKmh + m_acceleration * dt);
        return;
    }
    const double strongest = wish.sporty ? 11.0 : 7.5 - m_speedKmh * 0.035;
    const double wanted = m_running ? (wish.speedKmh - m_speedKmh) * 0.5 : -m_speedKmh;
    m_acceleration =
        towards(m_acceleration, std::clamp(wanted, -11.0, std::max(1.5, strongest)), 3);
    m_speedKmh = std::max(0.0, m_speedKmh + m_acceleration * dt);
    if (m_speedKmh < 0.3 && wish.speedKmh == 0)
        m_speedKmh = 0;
}

void Powertrain::shift(const DriverWish &wish)
{
    m_shiftPauseS = std::max(0.0, m_shiftPauseS - dt);
    if (m_speedKmh == 0) {
        m_gear = wish.speedKmh > 0 ? 1 : 0;
        return;
    }
    m_gear = std::max(1, m_gear);
    if (m_shiftPauseS > 0)
        return;
    const double inGear = m_speedKmh * ratios[m_gear];
    const double up = wish.sporty ? shiftUpRpm + 250 : 1900 + std::max(0.0, m_acceleration) * 130;
    const double down = wish.sporty ? 4300 : 1150;
    if (inGear > up && m_gear < topGear)
        ++m_gear;
    else if (inGear < down && m_gear > 1 && m_speedKmh * ratios[m_gear - 1] < shiftUpRpm)
        --m_gear;
    else
        return;
    m_shiftPauseS = 0.9;
}

void Powertrain::turn(const DriverWish &wish)
{
    const double cold = std::clamp((60 - m_coolant) / 40, 0.0, 1.0);
    const double idle = 720 + 620 * cold;
    double target = 0;
    double load = 0;
    if (wish.cranking) {
        target = 240 + noise(40);
        load = 20;
    } else if (m_running) {
        target = std::max(idle + noise(9), m_speedKmh * ratios[m_gear]);
        const double drag = m_speedKmh * m_speedKmh * 0.0019;
        load = 17 + 9 * cold + drag + m_acceleration * (5.5 + m_speedKmh * 0.03);
    }
    m_rpm = towards(m_rpm, target, target > m_rpm ? 9 : 6);
    if (target == 0 && m_rpm < 30)
        m_rpm = 0;
    m_load = towards(m_load, std::clamp(load + (m_running ? noise(1.2) : 0), 0.0, 99.0), 7);
}

void Powertrain::heat()
{
    const double power = m_running ? (m_rpm / 1000) * (0.35 + m_load / 60) : 0;
    // The thermostat opens between 84 and 94 degrees; more air flows through a moving radiator.
    const double thermostat = std::clamp((m_coolant - 84) / 10, 0.0, 1.0);
    const double radiator = thermostat * (m_coolant - m_ambient) * (0.010 + m_speedKmh * 0.00035);
    m_coolant += (power * 0.30 - radiator - (m_coolant - m_ambient) * 0.0006) * dt;
    m_oil = towards(m_oil, m_running ? m_coolant + power * 2.2 : m_ambient, 0.010);
    m_transmission =
        towards(m_transmission, m_running ? m_coolant * 0.86 + power * 1.3 : m_ambient, 0.006);
    const double bay = m_ambient + (m_coolant - m_ambient) * 0.42 / (1 + m_speedKmh * 0.045);
    m_intake = towards(m_intake, bay, 0.02);
}

void Powertrain::charge(const DriverWish &wish)
{
    double target = wish.ignition ? 12.2 : 12.5;
    if (wish.cranking)
        target = 10.1;
    else if (m_running)
        target =
            (m_acceleration < -2 ? 14.8 : 13.9) + 0.3 * std::clamp((60 - m_coolant) / 40, 0.0, 1.0);
    m_volts = towards(m_volts, target, wish.cranking ? 12 : 2.5);
}

} // namespace module
