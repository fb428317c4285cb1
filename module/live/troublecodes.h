#pragma once

#include "live/isotp.h"
#include "vehiclesource.h"

#include <QMap>

#include <map>
#include <optional>

namespace module {

/** The trouble codes in an answer to service 03, such as "P0301". */
QStringList troubleCodes(const QByteArray &answer);

/** The vehicle page's text for a car's stored trouble codes. */
Emission troubleCodesText(const QStringList &codes);

/** Reads the stored trouble codes from what the units of a car have answered. */
class TroubleCodeReader
{
public:
    /**
     * @param frame  an answer on a CAN bus
     * @return the codes of all units, when they have changed
     */
    std::optional<QStringList> read(const CanFrame &frame);

private:
    QStringList all() const;

    std::map<quint32, IsoTp> m_connections; // by the identifier of a unit's answers
    QMap<quint32, QStringList> m_codes;     // by the same
};

} // namespace module
