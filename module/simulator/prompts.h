#pragma once

#include "emissionqueue.h"
#include "wire.h"

#include <QList>

namespace module {

class Body;
class Manoeuvre;
class Tires;

/**
 * The module's tones and spoken prompts about what happens in the car, one at a time. Each is a
 * signal at its begin, with its speakers, and one at its end.
 */
class Prompts
{
public:
    void step(qint64 nowMs, double speedKmh, const Body &body, const Tires &tires,
              const Manoeuvre &manoeuvre);
    void report(EmissionQueue *out, qint64 nowMs);
    /** Plays a sample prompt. @param sample  0 information, 1 recognition, 2 a warning */
    void play(int sample);

private:
    struct Prompt
    {
        wire::Interrupt kind;
        int speakers;
        int lengthMs;
    };
    void watchDoors(double speedKmh, const Body &body);
    void watchTires(const Tires &tires);
    void watchObstacles(qint64 nowMs, const Manoeuvre &manoeuvre);

    QList<Prompt> m_waiting;
    qint64 m_untilMs = -1; // of the one that plays; -1 for none
    qint64 m_quietUntilMs = 0;
    qint64 m_nextParkingToneMs = 0;
    int m_warnedDoors = 0;
    bool m_warnedTire = false;
    bool m_asked = false;
};

} // namespace module
