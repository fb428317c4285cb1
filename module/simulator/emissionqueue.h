#pragma once

#include "snapshot.h"
#include "vehiclesource.h"

#include <QHash>
#include <QVector>

namespace module {

/** The emissions that a source plans, in order of time, and the state that the past ones left. */
class EmissionQueue
{
public:
    bool isEmpty() const { return m_queue.isEmpty(); }
    const Emission &first() const { return m_queue.constFirst(); }
    Emission take();
    void clear();

    void add(qint64 atMs, const QByteArray &signal, const QVariantList &arguments);
    /** Adds a signal unless the last one of its name has the same arguments. */
    void addChange(qint64 atMs, const QByteArray &signal, const QVariantList &arguments);
    /** Removes what is planned for a signal. */
    void cancel(const QByteArray &signal);

    /** Repeats the state of a moment, of the signals whose names begin with one of the prefixes. */
    void resend(qint64 atMs, const QList<QByteArray> &prefixes);
    /** Repeats the state that was taken so far before anything else. */
    void prependState(qint64 atMs);

private:
    void insert(const Emission &emission);
    Snapshot<Emission> stateAt(qint64 ms) const;

    QVector<Emission> m_queue;
    QHash<QByteArray, QVariantList> m_last; // of each signal, planned or taken
    Snapshot<Emission> m_taken;
};

/** A byte argument of a signal. */
inline QVariant byte(int value)
{
    return QVariant::fromValue(uchar(value));
}

} // namespace module
