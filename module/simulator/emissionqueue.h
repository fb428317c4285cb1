#pragma once

#include "vehiclesource.h"

#include <QHash>
#include <QVector>

namespace module {

/** What a car has to say: emissions in order of time, and the last of each signal. */
class EmissionQueue
{
public:
    bool isEmpty() const { return m_queue.isEmpty(); }
    const Emission &first() const { return m_queue.constFirst(); }
    Emission take();
    void clear();
    /** Puts emissions in front of all others. */
    void prepend(const QVector<Emission> &emissions) { m_queue = emissions + m_queue; }

    void say(qint64 atMs, const QByteArray &signal, const QVariantList &arguments);
    /** Says a signal unless the last one of its name said the same. */
    void sayChange(qint64 atMs, const QByteArray &signal, const QVariantList &arguments);
    /** Takes back what is still to be said under a name. */
    void drop(const QByteArray &signal);
    /** Says again what a signal says by that time, if anything. */
    void resend(qint64 atMs, const QByteArray &signal);
    /** The same for every signal whose name begins so, in order of the names. */
    void resendAll(qint64 atMs, const QByteArray &prefix);

private:
    void insert(const Emission &emission);

    QVector<Emission> m_queue;
    QHash<QByteArray, QVariantList> m_last; // of each signal, planned or said
    QHash<QByteArray, QVariantList> m_said; // of each signal, as far as it was taken
};

/** A byte argument of a signal. */
inline QVariant byte(int value)
{
    return QVariant::fromValue(uchar(value));
}

} // namespace module
