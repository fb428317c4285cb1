#pragma once

#include "quantities.h"
#include "vehiclesource.h"

#include <QHash>

#include <optional>

namespace module {

/**
 * Turns the values of a drive into the module's signals: engine speed for the centre gauge,
 * coolant, intake and load for their corners, the best further temperature for the top left, with
 * its title. Values that a page shows already are not sent again.
 */
class ObdMapper
{
public:
    /** @param present  by quantity, whether the drive has it */
    explicit ObdMapper(const QVector<bool> &present);

    /** The first signals of a drive: the titles of its quantities. */
    QVector<Emission> opening() const;
    /** The signal for a sample; none when no page would change. */
    std::optional<Emission> map(const Sample &sample);
    /** Forgets what was sent. */
    void reset() { m_last.clear(); }

private:
    bool isPresent(Quantity quantity) const { return m_present.value(int(quantity)); }
    QVariantList arguments(const Sample &sample, QByteArray *signal) const;

    QVector<bool> m_present;
    Quantity m_topLeft = Quantity::Count;
    QHash<QByteArray, QVariantList> m_last;
};

} // namespace module
