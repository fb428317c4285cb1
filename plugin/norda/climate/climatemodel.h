#pragma once

#include "climatestatus.h"
#include "climatezones.h"
#include "commandbytes.h"

#include <array>

namespace norda {

/**
 * The state of the climate screen: what the module reported last, what the next touch of a key
 * sends, and what is kept where a report names nothing new.
 */
class ClimateModel
{
public:
    ClimateZones &zones() { return m_zones; }
    const ClimateZones &zones() const { return m_zones; }

    void setStatus(const QList<int> &status) { m_status = climateStatusMap(status); }
    AutoDualStatus autoDualStatus() const { return norda::autoDualStatus(m_status); }
    ManualStatus manualStatus() const { return norda::manualStatus(m_status); }

    /** Takes a vent mode over from the status list. @return its code for `setVentPosition()` */
    int followVentMode(Layout layout, int statusValue);
    /** Takes a vent position over, and falls back to the front zone. @return row of the vent table
     */
    int setVentPosition(int code);
    /** Takes a seat's level over. @return the level, the last known one for one that is none */
    int setSeatLevel(int level);

    /** To be called at the start of each touch, so that nothing of the last one is sent again. */
    void clearBytes() { m_bytes.clear(); }
    /** Sets the bit of a touched key, and steps what the key steps. */
    void touch(ClimateGroup group, int id);
    /** Sets the bit of the zone key, and turns the page. */
    void pressZoneKey();
    /** Byte number to value, as the module wants it. */
    const QMap<int, int> &bytes() const { return m_bytes.map(); }

private:
    CommandBit stepSeat(ClimateGroup group, SeatKey key);
    CommandBit stepVentMode();

    ClimateZones m_zones;
    ClimateStatusMap m_status;
    QMap<NordaHVACMode, int> m_hvacModes;
    std::array<int, 2> m_ventModes{}; // by layout
    int m_ventRow = 0;
    int m_seatLevel = 0; // one for all seats
    std::array<bool, seatKeyCount> m_seatStepsUp{true, true, true, true};
    CommandBytes m_bytes;
};

} // namespace norda
