#pragma once

#include <QtGlobal>
#include <array>

namespace module {

class CarState;
class Controls;
class Powertrain;

/** Four tires that warm up while driving, one of them with a slow puncture. */
class Tires
{
public:
    enum Tire { FrontLeft, FrontRight, RearRight, RearLeft, Count };

    void step(qint64 nowMs, const Powertrain &powertrain, const Controls &controls);
    void handOver(CarState *car) const;

    double psi(Tire tire) const;
    bool isLow(Tire tire) const;
    /** The tire with the lowest pressure. */
    Tire lowest() const;

private:
    std::array<double, Count> m_coldPsi = {34.0, 34.0, 33.0, 33.0}; // at 20 degrees Celsius
    std::array<double, Count> m_celsius = {20.0, 20.0, 20.0, 20.0};
};

} // namespace module
