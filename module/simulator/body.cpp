#include "body.h"

#include "controls.h"
#include "powertrain.h"
#include "trip.h"
#include "units.h"

namespace module {

enum OpenBit {
    Hood = 0x01,
    Trunk = 0x02,
    FrontLeft = 0x04,
    FrontRight = 0x08,
    RearLeft = 0x10,
    RearRight = 0x20
};

struct Opening
{
    double fromSecond;
    double toSecond;
    int bit;
};

// clang-format off
static constexpr Opening openings[] = {
    {  0.0,   3.0, FrontLeft },
    {  0.0,   2.0, Trunk     },
    { 56.0,  61.0, FrontRight},
    { 57.0,  60.0, RearLeft  },
    { 92.0, 108.0, RearRight }, // not closed properly: it is driven with
    {467.0, 469.5, FrontRight},
    {589.5, 594.0, FrontLeft },
    {590.5, 599.0, Trunk     },
    {591.0, 597.0, Hood      },
    {591.5, 595.0, RearLeft  },
};

struct Name
{
    int bit;
    const char *text;
};

static constexpr Name names[] = {
    {FrontLeft, "Front left door"}, {FrontRight, "Front right door"}, {RearLeft, "Rear left door"},
    {RearRight, "Rear right door"}, {Hood, "Hood"},                   {Trunk, "Trunk"},
};

struct HeldOpening
{
    Controls::Control control;
    int bit;
};

static constexpr HeldOpening heldOpenings[] = {
    {Controls::Hood, Hood},
    {Controls::Trunk, Trunk},
    {Controls::DoorFrontLeft, FrontLeft},
    {Controls::DoorFrontRight, FrontRight},
    {Controls::DoorRearLeft, RearLeft},
    {Controls::DoorRearRight, RearRight},
};
// clang-format on

static constexpr qint64 engineFaultMs = 330000; // after the overtaking
static constexpr qint64 noticeMs = 12000;

void Body::step(qint64 nowMs, const Powertrain &powertrain, const Tires &tires,
                const Controls &controls)
{
    m_open = 0;
    for (const Opening &opening : openings) {
        if (nowMs >= opening.fromSecond * 1000 && nowMs < opening.toSecond * 1000)
            m_open |= opening.bit;
    }
    for (const auto &[control, bit] : heldOpenings) {
        if (controls.isHeld(control))
            m_open = controls.value(control) ? m_open | bit : m_open & ~bit;
    }

    if (!tripWish(nowMs).ignition || !(powertrain.isRunning() || m_engine != EngineUnknown))
        m_engine = EngineUnknown;
    else
        m_engine = nowMs < engineFaultMs ? EngineFine : EngineFault;
    if (controls.isHeld(Controls::EngineLamp))
        m_engine = EngineLamp(controls.value(Controls::EngineLamp));

    m_metres += powertrain.speedKmh() / 3.6 * Powertrain::stepMs / 1000;
    m_outside = qRound(fahrenheit(powertrain.ambient()));

    // A notice comes once and goes by itself or with its cause.
    const QStringList notice = noticeAt(powertrain, tires);
    if (notice != m_lastNotice)
        m_noticeUntilMs = nowMs + noticeMs;
    m_lastNotice = notice;
    const bool isShown = !notice.isEmpty() && nowMs < m_noticeUntilMs;
    m_notice = isShown ? notice : QStringList{QString(), QString()};
}

QStringList Body::noticeAt(const Powertrain &powertrain, const Tires &tires) const
{
    static const char *const tireNames[] = {"Front left tire", "Front right tire",
                                            "Rear right tire", "Rear left tire"};
    for (const Name &name : names) {
        if (powertrain.speedKmh() > 3 && m_open & name.bit)
            return {QString::fromLatin1(name.text), QStringLiteral("is open")};
    }
    const Tires::Tire soft = tires.lowest();
    if (tires.isLow(soft))
        return {QString::fromLatin1(tireNames[soft]), QStringLiteral("pressure low")};
    if (m_engine == EngineFault)
        return {QStringLiteral("Check engine"), QStringLiteral("Visit a workshop")};
    return {};
}

void Body::report(EmissionQueue *out, qint64 nowMs) const
{
    out->sayChange(nowMs, "doorStatus", {byte(m_open)});
    out->sayChange(nowMs, "checkEngineStatus", {byte(m_engine)});
    out->sayChange(nowMs, "vehicleInfoText", {m_notice[0], m_notice[1]});
    if (m_notice[0].isEmpty()) // the other one would be lost
        out->sayChange(nowMs, "vehTopBarText",
                       {QStringLiteral("Trip %1 mi   Outside %2 \u00B0F")
                            .arg(m_metres / 1000 * milesPerKilometre, 0, 'f', 1)
                            .arg(m_outside)});
}

} // namespace module
