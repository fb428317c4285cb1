#pragma once

#include "lastsaid.h"
#include "vehiclesource.h"

#include <QJsonObject>
#include <QVector>

#include <random>

namespace module {

/**
 * A module that misbehaves on demand: spoils what a source emits on its way to the adaptor. The
 * same faults with the same seed spoil the same emissions in the same way.
 */
class Faults
{
public:
    enum Kind { LateStart, Silence, Flood, Duplicate, Reorder, OutOfRange, Truncate, Restart };
    static constexpr int KindCount = Restart + 1;

    /** The word for a kind on the command line. */
    static const char *nameOf(Kind kind);
    /** What a kind does to those it strikes, for a person. */
    static const char *meaningOf(Kind kind);

    /** Whether a kind's value is a time, and not a part of the emissions. */
    static bool isInSeconds(Kind kind);

    explicit Faults(quint32 seed = 1);
    void setSeed(quint32 seed);
    quint32 seed() const { return m_seed; }
    /** The kinds that are on, as add() takes them. */
    QStringList stated() const;
    /** The same faults for another drive: nothing is held back, missed or counted. */
    Faults anew() const;

    /**
     * Adds a fault by its name and, behind a colon, its value: the part of the emissions that it
     * spoils, from 0 (off) to 1, or for a late start and for restarts the seconds until then.
     * @param error  one line that says what was expected
     */
    bool add(const QString &fault, QString *error);
    /** @param value  as for add(); 0 is off */
    void set(Kind kind, double value) { m_values[kind] = value; }
    double value(Kind kind) const { return m_values[kind]; }
    /** Whether no kind is on and nothing is held back: everything passes as it is. */
    bool isIdle() const;
    static double usualValue(Kind kind);
    static double greatestValue(Kind kind);

    /** What reaches the adaptor instead of an emission: often just that. */
    QVector<Emission> pass(Emission emission);
    /** Somebody jumped in the drive: nothing that was held back is due any more. */
    void jump(qint64 ms);

    /** How often each kind struck; empty when none was on. */
    QJsonObject statistics() const;

private:
    bool strikes(Kind kind);
    bool isDown(qint64 ms) const;
    int below(int count) { return int(m_random() % quint32(count)); }
    void truncate(QVariant *value);

    double m_values[KindCount] = {};
    int m_struck[KindCount] = {};
    quint32 m_seed;
    std::mt19937 m_random;
    LastSaid<Emission> m_missed; // while the module was down
    Emission m_heldBack;         // its turn comes after the next one
};

} // namespace module
