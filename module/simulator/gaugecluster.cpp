#include "gaugecluster.h"

#include "powertrain.h"
#include "units.h"
#include "wire.h"

namespace module {

static constexpr qint64 centreMs = 100; // between two values of the centre gauge
static constexpr const char *degrees = "\u2109";
static constexpr double readyCelsius = 75;

/** What the top left gauge can show; a touch selects the next one. */
struct TopLeft
{
    const char *title;
    double (Powertrain::*celsius)() const;
};

static constexpr TopLeft topLefts[] = {
    {"Transmission Temp", &Powertrain::transmission},
    {"Oil Temp", &Powertrain::oil},
    {"Ambient Temp", &Powertrain::ambient},
};

void GaugeCluster::nextTopLeft()
{
    m_topLeft = (m_topLeft + 1) % int(std::size(topLefts));
}

double GaugeCluster::topLeft(const Powertrain &powertrain) const
{
    return (powertrain.*topLefts[m_topLeft].celsius)();
}

static void reportCentre(EmissionQueue *out, qint64 nowMs, const Powertrain &powertrain)
{
    const int rpm = qRound(powertrain.rpm() / 10) * 10;
    out->addChange(nowMs, "centerGaugeValueNotify",
                   {QString::number(rpm), QStringLiteral("RPM"), byte(qMin(100, rpm / 100))});
    const QString gear = powertrain.isReversing() ? QStringLiteral("R")
                         : powertrain.gear() == 0 ? QStringLiteral("P")
                                                  : QStringLiteral("D%1").arg(powertrain.gear());
    out->addChange(
        nowMs, "gauTopBarTextNotify",
        {QStringLiteral("%1 mph   %2").arg(qRound(miles(powertrain.speedKmh()))).arg(gear)});
}

static void reportCorner(EmissionQueue *out, qint64 nowMs, const QByteArray &signal, double value,
                         const char *unit, int fullScale)
{
    const int rounded = qRound(value);
    out->addChange(
        nowMs, signal,
        {QString::number(rounded), QString::fromUtf8(unit), byte(qBound(0, rounded, fullScale))});
}

static void reportPeak(EmissionQueue *out, qint64 nowMs, const Powertrain &powertrain)
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

void GaugeCluster::report(EmissionQueue *out, qint64 nowMs, const Powertrain &powertrain) const
{
    static constexpr int hottest = 250;
    if (nowMs % centreMs == 0)
        reportCentre(out, nowMs, powertrain);
    const auto report = [out, nowMs](const char *signal, double celsius) {
        reportCorner(out, nowMs, signal, fahrenheit(celsius), degrees, hottest);
    };
    report("gaugeTLValueDualNotify", topLeft(powertrain));
    report("gaugeTRValueDualNotify", powertrain.coolant());
    report("gaugeBLValueDualNotify", powertrain.intake());
    reportCorner(out, nowMs, "gaugeBRValueDualNotify", powertrain.loadPercent(), "%", 100);
    reportPeak(out, nowMs, powertrain);
}

void GaugeCluster::reportTitles(EmissionQueue *out, qint64 atMs) const
{
    out->add(atMs, "gaugeTitlesNotify",
             {QStringList{QStringLiteral("Tachometer"), QLatin1String(topLefts[m_topLeft].title),
                          QStringLiteral("Coolant Temp"), QStringLiteral("Intake Air Temp"),
                          QStringLiteral("Engine Calculated Load")}});
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
