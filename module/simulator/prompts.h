#pragma once

#include "emissionqueue.h"

#include <QList>

namespace module {

class Body;
class Manoeuvre;
class Tires;

/**
 * The module's voice: tones and spoken prompts about what happens in the car, one at a time. Each
 * is a notice that it begins, with the speakers that it comes from, and a notice that it is over.
 */
class Prompts
{
public:
    void step(qint64 nowMs, double speedKmh, const Body &body, const Tires &tires,
              const Manoeuvre &manoeuvre);
    void report(EmissionQueue *out, qint64 nowMs);
    /** Says something although nothing happened. @param voice  0 information, 1 recognition,
     *  2 a warning */
    void say(int voice);

private:
    enum Kind { Over = 0, Information = 2, Recognition = 3, WarningTone = 4 };
    struct Prompt
    {
        Kind kind;
        int speakers;
        int lengthMs;
    };
    void plan(const Prompt &prompt);

    QList<Prompt> m_waiting;
    qint64 m_untilMs = -1; // of the one that plays; -1 for none
    qint64 m_quietUntilMs = 0;
    qint64 m_nextParkingToneMs = 0;
    int m_warnedDoors = 0;
    bool m_warnedTire = false;
    bool m_asked = false;
};

} // namespace module
