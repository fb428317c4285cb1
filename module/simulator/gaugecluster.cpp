#include "gaugecluster.h"

#include "pagesignals.h"
#include "powertrain.h"
#include "wire.h"

namespace module {

static constexpr double readyCelsius = 75;

void GaugeCluster::nextTopLeft(CarState *car)
{
    const int shown = topLeftTemperatures.indexOf(car->topLeft());
    car->setTopLeft(topLeftTemperatures.at((shown + 1) % topLeftTemperatures.size()));
}

void GaugeCluster::report(EmissionQueue *out, qint64 nowMs, const Powertrain &powertrain) const
{
    const bool shiftNow = powertrain.rpm() > Powertrain::shiftUpRpm - 500;
    const bool ready = powertrain.isRunning() && powertrain.coolant() > readyCelsius;
    out->addChange(nowMs, "shifterArrowIndicatorNotify", {byte(shiftNow)});
    if (shiftNow || ready) {
        out->addChange(nowMs, "centerGaugePeakColorNotify",
                       {byte(shiftNow ? wire::PeakRed : wire::PeakGreen)});
        out->addChange(nowMs, "peakIndicatorTextNotify",
                       {shiftNow ? QStringLiteral("SHIFT") : QStringLiteral("READY")});
    }
    out->addChange(nowMs, "peakIndicatorNotify", {byte(shiftNow || ready)});
}

void GaugeCluster::reportTitles(EmissionQueue *out, qint64 atMs, const CarState &car) const
{
    out->add(atMs, "gaugeTitlesNotify", gaugeTitles(car));
}

void GaugeCluster::reportStyle(EmissionQueue *out, qint64 atMs) const
{
    static constexpr int gauges = 5;
    out->add(atMs, "gaugeGraphicalSettingNotify",
             {QByteArray(gauges, m_arcs ? '\0' : '\1'), QByteArray(gauges, '\0')});
}

void GaugeCluster::reportPresets(EmissionQueue *out, qint64 atMs) const
{
    const QStringList captions = {QStringLiteral("Street"), QStringLiteral("Track")};
    QByteArray states(captions.size(), char(wire::KeyEnabled));
    states[m_preset] = char(wire::KeyChecked);
    out->add(atMs, "gauCustomControlLabelsNotify", {captions, states});
    out->add(atMs, "activePresetStatusNotify", {byte(m_preset)});
}

} // namespace module
