#pragma once

#include "quantities.h"
#include "vehiclesource.h"

#include <QHash>

#include <optional>

namespace module {

/**
 * Turns what a car reports into the module's signals: engine speed to the centre gauge, coolant,
 * intake and load to their corners, the best further temperature to the top left under its own
 * title. Values that a screen shows already are not sent again.
 */
class ObdMapper
{
public:
    /** @param present  by quantity, whether the drive carries it at all */
    explicit ObdMapper(const QVector<bool> &present);

    /** The signals that open a drive: the titles of what it carries. */
    QVector<Emission> opening() const;
    /** What a sample leads to; nothing when no screen would change. */
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
