#include "prompts.h"

#include "body.h"
#include "manoeuvre.h"
#include "tires.h"

namespace module {

enum Speaker { FrontLeft = 1, FrontRight = 2, RearLeft = 4, RearRight = 8, Centre = 16 };

struct DoorSpeaker
{
    int openBit;
    int speaker;
};

static constexpr DoorSpeaker doorSpeakers[] = {
    {0x04, FrontLeft}, {0x08, FrontRight}, {0x10, RearLeft}, {0x20, RearRight}};

static constexpr qint64 recognitionMs = 160000; // the driver asks for something
static constexpr int breathMs = 400;            // between two prompts

void Prompts::plan(const Prompt &prompt)
{
    m_waiting.append(prompt);
}

void Prompts::step(qint64 nowMs, double speedKmh, const Body &body, const Tires &tires,
                   const Manoeuvre &manoeuvre)
{
    if (!m_asked && nowMs >= recognitionMs) {
        m_asked = true;
        plan({Recognition, FrontLeft, 6000});
        plan({Information, FrontLeft | FrontRight, 3000});
    }

    const int open = speedKmh > 3 ? body.openBits() : 0;
    for (const DoorSpeaker &door : doorSpeakers) {
        if (open & ~m_warnedDoors & door.openBit) {
            plan({WarningTone, door.speaker, 1500});
            plan({Information, FrontLeft | FrontRight, 2500});
        }
    }
    m_warnedDoors = open;

    const bool isLow = tires.isLow(tires.lowest());
    if (isLow && !m_warnedTire) {
        plan({WarningTone, FrontLeft | FrontRight | Centre, 1500});
        plan({Information, FrontLeft | FrontRight, 3500});
    }
    m_warnedTire = m_warnedTire || isLow;

    // The nearer the obstacle, the sooner the next tone.
    static constexpr int firstRearSensor = 4;
    int nearest = 0;
    for (int sensor = firstRearSensor; sensor < Manoeuvre::SensorCount; ++sensor)
        nearest = qMax(nearest, manoeuvre.level(sensor));
    if (nearest > 0 && manoeuvre.isBackingUp(nowMs) && nowMs >= m_nextParkingToneMs) {
        plan({WarningTone, RearLeft | RearRight, 250});
        m_nextParkingToneMs = nowMs + 2400 / nearest;
    }
}

void Prompts::say(int voice)
{
    static constexpr Prompt samples[] = {
        {Information, FrontLeft | FrontRight, 3000},
        {Recognition, FrontLeft, 6000},
        {WarningTone, FrontLeft | FrontRight | Centre, 1500},
    };
    plan(samples[voice]);
}

void Prompts::report(EmissionQueue *out, qint64 nowMs)
{
    const auto notice = [out, nowMs](int kind, int speakers) {
        out->say(nowMs, "audioInterruptNotify", {byte(kind), byte(speakers)});
    };
    if (m_untilMs >= 0 && nowMs >= m_untilMs) {
        notice(Over, 0);
        m_untilMs = -1;
        m_quietUntilMs = nowMs + breathMs;
    }
    if (m_untilMs >= 0 || m_waiting.isEmpty() || nowMs < m_quietUntilMs)
        return;
    const Prompt prompt = m_waiting.takeFirst();
    notice(prompt.kind, prompt.speakers);
    m_untilMs = nowMs + prompt.lengthMs;
}

} // namespace module
