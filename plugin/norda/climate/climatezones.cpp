#include "climatezones.h"

namespace norda {

void ClimateZones::press()
{
    m_towardsSecond = !m_towardsSecond;
    m_page = m_towardsSecond ? Layout::Manual : Layout::AutoDual;
}

void ClimateZones::click(bool checked)
{
    m_active = checked ? Zone::Front : Zone::Second;
    m_layout = m_page = checked ? Layout::Manual : Layout::AutoDual;
}

bool ClimateZones::bringUp(Zone zone)
{
    const bool changes = zone != m_active;
    m_active = zone;
    m_page = m_layout;
    return changes;
}

} // namespace norda
