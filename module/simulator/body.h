#pragma once

#include "emissionqueue.h"
#include "tires.h"
#include "wire.h"

namespace module {

class CarState;
class Controls;
class Powertrain;

/** Doors, lid and hood, the check-engine lamp, and the texts about all of them. */
class Body
{
public:
    /** Advances to a moment of the trip. */
    void step(qint64 nowMs, const Powertrain &powertrain, const Tires &tires,
              const Controls &controls);
    void handOver(CarState *car) const;
    /** The texts, which are no quantities. */
    void report(EmissionQueue *out, qint64 nowMs) const;

    /** What is open, as `wire::OpenBit`s. */
    int openBits() const { return m_open; }

private:
    void stepOpenings(qint64 nowMs, const Controls &controls);
    void stepEngineLamp(qint64 nowMs, const Powertrain &powertrain, const Controls &controls);
    void stepNotice(qint64 nowMs, const Powertrain &powertrain, const Tires &tires);
    QStringList noticeFor(const Powertrain &powertrain, const Tires &tires) const;

    int m_open = 0;
    wire::EngineLamp m_engine = wire::EngineUnknown;
    QStringList m_notice = {QString(), QString()}; // the two lines on show
    QStringList m_lastNotice;
    qint64 m_noticeUntilMs = 0;
    double m_metres = 0; // driven
    int m_outside = 0;   // degrees Fahrenheit
};

} // namespace module
