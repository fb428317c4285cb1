#pragma once

#include "emissionqueue.h"

namespace module {

class CarState;
class Powertrain;

/** What the gauges page shows besides quantities: titles, shift lamp, style and presets. */
class GaugeCluster
{
public:
    /** The next temperature on the top left gauge. */
    static void nextTopLeft(CarState *car);
    /** Needles or arcs. */
    void nextStyle() { m_arcs = !m_arcs; }
    void setPreset(int preset) { m_preset = preset; }

    void report(EmissionQueue *out, qint64 nowMs, const Powertrain &powertrain) const;
    void reportTitles(EmissionQueue *out, qint64 atMs, const CarState &car) const;
    void reportStyle(EmissionQueue *out, qint64 atMs) const;
    void reportPresets(EmissionQueue *out, qint64 atMs) const;

private:
    int m_preset = 0;
    bool m_arcs = false;
};

} // namespace module
