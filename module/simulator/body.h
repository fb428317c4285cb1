#pragma once

#include "emissionqueue.h"
#include "tires.h"

namespace module {

class Controls;
class Powertrain;

/** Doors, lid and hood, the check-engine lamp, and the texts about all of them. */
class Body
{
public:
    /** Advances to a moment of the trip. */
    void step(qint64 nowMs, const Powertrain &powertrain, const Tires &tires,
              const Controls &controls);
    void report(EmissionQueue *out, qint64 nowMs) const;

    /** What is open: bit 0 the hood, 1 the trunk, 2 to 5 front left, front right, rear left, rear
     *  right. */
    int openBits() const { return m_open; }
    bool isEngineFaulty() const { return m_engine == EngineFault; }

private:
    enum EngineLamp { EngineUnknown, EngineFine, EngineFault };
    QStringList noticeAt(const Powertrain &powertrain, const Tires &tires) const;

    int m_open = 0;
    EngineLamp m_engine = EngineUnknown;
    QStringList m_notice = {QString(), QString()}; // what the driver should know now
    QStringList m_lastNotice;
    qint64 m_noticeUntilMs = 0;
    double m_metres = 0;
    int m_outside = 0; // degrees Fahrenheit
};

} // namespace module
