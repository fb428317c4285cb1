#include "body.h"

#include "carstate.h"
#include "controls.h"
#include "powertrain.h"
#include "trip.h"
#include "units.h"

namespace module {

using namespace wire;

struct Opening
{
    double fromSecond;
    double toSecond;
    int bit;
};

// clang-format off
static constexpr Opening openings[] = {
    {  0.0,   3.0, DoorFrontLeft },
    {  0.0,   2.0, Trunk         },
    { 56.0,  61.0, DoorFrontRight},
    { 57.0,  60.0, DoorRearLeft  },
    { 92.0, 108.0, DoorRearRight }, // not closed properly, so open while driving
    {467.0, 469.5, DoorFrontRight},
    {589.5, 594.0, DoorFrontLeft },
    {590.5, 599.0, Trunk         },
    {591.0, 597.0, Hood          },
    {591.5, 595.0, DoorRearLeft  },
};

struct Door
{
    int bit;
    Controls::Control control;
    const char *name;
};

// In the order of the notices about them.
static constexpr Door doors[] = {
    {DoorFrontLeft,  Controls::DoorFrontLeft,  "Front left door" },
    {DoorFrontRight, Controls::DoorFrontRight, "Front right door"},
    {DoorRearLeft,   Controls::DoorRearLeft,   "Rear left door"  },
    {DoorRearRight,  Controls::DoorRearRight,  "Rear right door" },
    {Hood,           Controls::Hood,           "Hood"            },
    {Trunk,          Controls::Trunk,          "Trunk"           },
};
// clang-format on

static constexpr qint64 engineFaultMs = 330000; // after the overtaking
static constexpr qint64 noticeMs = 12000;

void Body::step(qint64 nowMs, const Powertrain &powertrain, const Tires &tires,
                const Controls &controls)
{
    stepOpenings(nowMs, controls);
    stepEngineLamp(nowMs, powertrain, controls);
    stepNotice(nowMs, powertrain, tires);
    m_metres += metresPerSecond(powertrain.speedKmh()) * Powertrain::stepSeconds;
    m_outside = qRound(fahrenheit(powertrain.ambient()));
}

void Body::stepOpenings(qint64 nowMs, const Controls &controls)
{
    m_open = 0;
    for (const Opening &opening : openings) {
        if (nowMs >= opening.fromSecond * 1000 && nowMs < opening.toSecond * 1000)
            m_open |= opening.bit;
    }
    for (const Door &door : doors) {
        if (controls.isOverridden(door.control))
            m_open = controls.value(door.control) ? m_open | door.bit : m_open & ~door.bit;
    }
}

void Body::stepEngineLamp(qint64 nowMs, const Powertrain &powertrain, const Controls &controls)
{
    if (!tripWish(nowMs).ignition || !(powertrain.isRunning() || m_engine != EngineUnknown))
        m_engine = EngineUnknown;
    else
        m_engine = nowMs < engineFaultMs ? EngineFine : EngineFault;
    if (controls.isOverridden(Controls::EngineLamp))
        m_engine = EngineLamp(controls.value(Controls::EngineLamp));
}

/** A notice is shown once, until its time is over or its cause is gone. */
void Body::stepNotice(qint64 nowMs, const Powertrain &powertrain, const Tires &tires)
{
    const QStringList notice = noticeFor(powertrain, tires);
    if (notice != m_lastNotice)
        m_noticeUntilMs = nowMs + noticeMs;
    m_lastNotice = notice;
    const bool isShown = !notice.isEmpty() && nowMs < m_noticeUntilMs;
    m_notice = isShown ? notice : QStringList{QString(), QString()};
}

QStringList Body::noticeFor(const Powertrain &powertrain, const Tires &tires) const
{
    static const char *const tireNames[] = {"Front left tire", "Front right tire",
                                            "Rear right tire", "Rear left tire"};
    for (const Door &door : doors) {
        if (powertrain.speedKmh() > 3 && m_open & door.bit)
            return {QString::fromLatin1(door.name), QStringLiteral("is open")};
    }
    const Tires::Tire soft = tires.lowest();
    if (tires.isLow(soft))
        return {QString::fromLatin1(tireNames[soft]), QStringLiteral("pressure low")};
    if (m_engine == EngineFault)
        return {QStringLiteral("Check engine"), QStringLiteral("Visit a workshop")};
    return {};
}

void Body::handOver(CarState *car) const
{
    for (int i = 0; i < int(std::size(doors)); ++i)
        car->set(Quantity::HoodOpen + i, m_open >> i & 1);
    if (m_engine == EngineUnknown)
        car->forget(Quantity::EngineLamp);
    else
        car->set(Quantity::EngineLamp, m_engine == EngineFault);
}

void Body::report(EmissionQueue *out, qint64 nowMs) const
{
    out->addChange(nowMs, "vehicleInfoText", {m_notice[0], m_notice[1]});
    if (m_notice[0].isEmpty()) // a notice covers the top-bar text
        out->addChange(nowMs, "vehTopBarText",
                       {QStringLiteral("Trip %1 mi   Outside %2 \u00B0F")
                            .arg(miles(m_metres / 1000), 0, 'f', 1)
                            .arg(m_outside)});
}

} // namespace module
