#pragma once

#include "emissionqueue.h"

#include <array>

namespace module {

class Controls;
class Powertrain;

/** Four tires that warm up while driving, one of them with a slow puncture. */
class Tires
{
public:
    enum Tire { FrontLeft, FrontRight, RearRight, RearLeft, Count };

    void step(qint64 nowMs, const Powertrain &powertrain, const Controls &controls);
    /** @param engineFault  sent with the pressures */
    void report(EmissionQueue *out, qint64 nowMs, bool engineFault) const;
    /** After any other signal that shows the temperatures. */
    void repeatWarnings(EmissionQueue *out, qint64 nowMs) const;

    double psi(Tire tire) const;
    int fahrenheitOf(Tire tire) const;
    bool isLow(Tire tire) const;
    /** The tire with the lowest pressure. */
    Tire lowest() const;

private:
    int flags(bool (Tires::*isWarning)(Tire) const) const;
    bool isWarm(Tire tire) const;
    bool isSoftOrWarm(Tire tire) const { return isLow(tire) || isWarm(tire); }
    QVariantList temperatures() const;

    std::array<double, Count> m_coldPsi = {34.0, 34.0, 33.0, 33.0}; // at 20 degrees Celsius
    std::array<double, Count> m_celsius = {20.0, 20.0, 20.0, 20.0};
};

} // namespace module
