#pragma once

#include "emissionqueue.h"

namespace module {

class Powertrain;

/** The gauges page: titles, values, shift lamp and presets, and what its touches change. */
class GaugeCluster
{
public:
    /** The next temperature on the top left gauge. */
    void nextTopLeft();
    /** Needles or arcs. */
    void nextStyle() { m_arcs = !m_arcs; }
    void setPreset(int preset) { m_preset = preset; }

    void report(EmissionQueue *out, qint64 nowMs, const Powertrain &powertrain) const;
    void reportTitles(EmissionQueue *out, qint64 atMs) const;
    void reportStyle(EmissionQueue *out, qint64 atMs) const;
    void reportPresets(EmissionQueue *out, qint64 atMs) const;

    /** The temperature on the top left gauge, in degrees Celsius. */
    double topLeft(const Powertrain &powertrain) const;

private:
    int m_topLeft = 0;
    int m_preset = 0;
    bool m_arcs = false;
};

} // namespace module
