#include "climatemodel.h"

namespace norda {

int ClimateModel::followVentMode(Layout layout, int statusValue)
{
    const VentMode mode = ventMode(statusValue);
    int &index = m_ventModes[size_t(layout)];
    index = mode.index.value_or(index);
    return mode.position;
}

int ClimateModel::setVentPosition(int code)
{
    m_zones.fallBackToFront();
    m_ventRow = ventRow(code).value_or(m_ventRow);
    return m_ventRow;
}

int ClimateModel::setSeatLevel(int level)
{
    if (level >= 0 && level < seatLevelCount)
        m_seatLevel = level;
    return m_seatLevel;
}

void ClimateModel::touch(ClimateGroup group, int id)
{
    if (const auto key = seatKey(group, id))
        m_bytes.set(stepSeat(group, *key));
    else if (isVentKey(group, id))
        m_bytes.set(stepVentMode());
    else if (const auto bit = commandBit(group, id))
        m_bytes.set(*bit);
}

CommandBit ClimateModel::stepSeat(ClimateGroup group, SeatKey key)
{
    const int reported = m_status.value(seatPosition(group, key));
    bool &up = m_seatStepsUp[size_t(key)];
    up = seatStepsUp(group, key, up, reported);
    return up ? seatUpBit(group, key) : seatDownBit(group, key);
}

CommandBit ClimateModel::stepVentMode()
{
    int &index = m_ventModes[size_t(Layout::AutoDual)];
    index = (index + 1) % ventModeCount;
    return ventCommandBit(index);
}

void ClimateModel::pressZoneKey()
{
    m_zones.press();
    m_bytes.set(m_zones.isTowardsSecond() ? toSecondZoneBit : toFrontZoneBit);
}

} // namespace norda
