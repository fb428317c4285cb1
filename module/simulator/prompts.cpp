#include "prompts.h"

#include "body.h"
#include "manoeuvre.h"
#include "tires.h"

namespace module {

using namespace wire;

static constexpr int frontSpeakers = SpeakerFrontLeft | SpeakerFrontRight;

struct DoorSpeaker
{
    int openBit;
    int speaker;
};

static constexpr DoorSpeaker doorSpeakers[] = {{DoorFrontLeft, SpeakerFrontLeft},
                                               {DoorFrontRight, SpeakerFrontRight},
                                               {DoorRearLeft, SpeakerRearLeft},
                                               {DoorRearRight, SpeakerRearRight}};

static constexpr qint64 recognitionMs = 160000; // the driver uses the voice recognition
static constexpr int pauseMs = 400;             // between two prompts

void Prompts::step(qint64 nowMs, double speedKmh, const Body &body, const Tires &tires,
                   const Manoeuvre &manoeuvre)
{
    if (!m_asked && nowMs >= recognitionMs) {
        m_asked = true;
        m_waiting.append({VoiceRecognition, SpeakerFrontLeft, 6000});
        m_waiting.append({VoiceInformation, frontSpeakers, 3000});
    }
    watchDoors(speedKmh, body);
    watchTires(tires);
    watchObstacles(nowMs, manoeuvre);
}

void Prompts::watchDoors(double speedKmh, const Body &body)
{
    const int open = speedKmh > 3 ? body.openBits() : 0;
    for (const DoorSpeaker &door : doorSpeakers) {
        if (open & ~m_warnedDoors & door.openBit) {
            m_waiting.append({WarningTone, door.speaker, 1500});
            m_waiting.append({VoiceInformation, frontSpeakers, 2500});
        }
    }
    m_warnedDoors = open;
}

void Prompts::watchTires(const Tires &tires)
{
    const bool isLow = tires.isLow(tires.lowest());
    if (isLow && !m_warnedTire) {
        m_waiting.append({WarningTone, frontSpeakers | SpeakerCentre, 1500});
        m_waiting.append({VoiceInformation, frontSpeakers, 3500});
    }
    m_warnedTire = m_warnedTire || isLow;
}

/** The nearer the obstacle, the sooner the next tone. */
void Prompts::watchObstacles(qint64 nowMs, const Manoeuvre &manoeuvre)
{
    int nearest = 0;
    for (int sensor = Manoeuvre::FirstRearSensor; sensor < Manoeuvre::SensorCount; ++sensor)
        nearest = qMax(nearest, manoeuvre.level(sensor));
    if (nearest > 0 && manoeuvre.isBackingUp(nowMs) && nowMs >= m_nextParkingToneMs) {
        m_waiting.append({WarningTone, SpeakerRearLeft | SpeakerRearRight, 250});
        m_nextParkingToneMs = nowMs + 2400 / nearest;
    }
}

void Prompts::play(int sample)
{
    static constexpr Prompt samples[] = {
        {VoiceInformation, frontSpeakers, 3000},
        {VoiceRecognition, SpeakerFrontLeft, 6000},
        {WarningTone, frontSpeakers | SpeakerCentre, 1500},
    };
    m_waiting.append(samples[sample]);
}

void Prompts::report(EmissionQueue *out, qint64 nowMs)
{
    const auto notice = [out, nowMs](int kind, int speakers) {
        out->add(nowMs, "audioInterruptNotify", {byte(kind), byte(speakers)});
    };
    if (m_untilMs >= 0 && nowMs >= m_untilMs) {
        notice(InterruptOver, 0);
        m_untilMs = -1;
        m_quietUntilMs = nowMs + pauseMs;
    }
    if (m_untilMs >= 0 || m_waiting.isEmpty() || nowMs < m_quietUntilMs)
        return;
    const Prompt prompt = m_waiting.takeFirst();
    notice(prompt.kind, prompt.speakers);
    m_untilMs = nowMs + prompt.lengthMs;
}

} // namespace module
