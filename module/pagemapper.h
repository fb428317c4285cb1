#pragma once

#include "carstate.h"
#include "vehiclesource.h"

#include <QHash>

namespace module {

/**
 * Turns what a car reports into the module's signals for every page. What a page shows already is
 * not sent again; of the temperatures for the top left gauge it shows the best that the car has.
 */
class PageMapper
{
public:
    /** @param present  by quantity, whether the car has it */
    explicit PageMapper(const QVector<bool> &present);

    /** The first signals of a drive: the titles of its quantities. */
    QVector<Emission> opening() const;
    /** The signals for a sample, in their order; none when no page would change. */
    QVector<Emission> map(const Sample &sample);
    /** Forgets what was sent. */
    void reset();

private:
    void emitRow(int row, qint64 atMs, bool again, QVector<Emission> *out);

    QVector<QVector<int>> m_rows; // of the page signals, by quantity
    CarState m_car;
    QHash<QByteArray, Emission> m_last; // by the name of a page signal
};

/** Of several emissions of a signal the last one counts: what is left is the state. */
QVector<Emission> lastOfEach(const QVector<Emission> &emissions);

} // namespace module
