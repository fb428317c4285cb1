#pragma once

#include "snapshot.h"
#include "vehiclesource.h"

#include <QJsonObject>
#include <QVector>

#include <random>

namespace module {

/**
 * Fault injection: damages, drops, delays or repeats what a source emits on its way to the adaptor.
 * The same faults with the same seed have the same effect on the same emissions.
 */
class Faults
{
public:
    enum Kind { LateStart, Silence, Flood, Duplicate, Reorder, OutOfRange, Truncate, Restart };
    static constexpr int KindCount = Restart + 1;

    /** The word for a kind on the command line. */
    static const char *nameOf(Kind kind);
    /** The effect of a kind, for a person. */
    static const char *meaningOf(Kind kind);

    /** Whether a kind's value is in seconds, and not a share of the emissions. */
    static bool isInSeconds(Kind kind);

    explicit Faults(quint32 seed = 1);
    void setSeed(quint32 seed);
    quint32 seed() const { return m_seed; }
    /** The kinds that are on, as add() takes them. */
    QStringList stated() const;
    /** The same faults for another drive: with nothing held back, missed or counted. */
    Faults forNextDrive() const;

    /**
     * Adds a fault by its name, optionally followed by a colon and its value: the share of the
     * emissions with the fault, from 0 (off) to 1, or the seconds until a late start or a restart.
     * @param error  one line with what was expected
     */
    bool add(const QString &fault, QString *error);
    /** @param value  as for add(); 0 is off */
    void set(Kind kind, double value) { m_values[kind] = value; }
    double value(Kind kind) const { return m_values[kind]; }
    /** Whether no kind is on and nothing is held back: every emission passes unchanged. */
    bool isIdle() const;
    static double highestValue(Kind kind);

    /** What reaches the adaptor instead of an emission: often just that. */
    QVector<Emission> pass(Emission emission);
    /** After a seek: drops what was held back. */
    void seek(qint64 ms);

    /** The number of injected faults by kind; empty when none was on. */
    QJsonObject statistics() const;

private:
    bool occurs(Kind kind);
    int below(int count) { return int(m_random() % quint32(count)); }
    bool isStarting(qint64 ms) const { return double(ms) < m_values[LateStart] * 1000; }
    bool isRestarting(qint64 ms) const;
    QVector<Emission> catchUp(qint64 ms);
    void damage(QVariantList *arguments);
    int repetitions();

    double m_values[KindCount] = {};
    int m_counts[KindCount] = {};
    quint32 m_seed;
    std::mt19937 m_random;
    Snapshot<Emission> m_missed; // while the module was down
    Emission m_heldBack;         // passes after the next one
};

} // namespace module
