#include "singlecommands.h"

#include <algorithm>
#include <iterator>

namespace norda {

// clang-format off
#define NORDA_ROW(group, id, name) {ClimateGroup::group, id, &VtqAdaptor::name, &VtqAdaptor::secound##name}
static constexpr HeldCommand heldCommands[] = {
    NORDA_ROW(ManualIcon,  0, manTempDecButton),
    NORDA_ROW(ManualIcon,  1, fanSpeedDownButton),
    NORDA_ROW(ManualIcon,  2, manTempIncButton),
    NORDA_ROW(ManualIcon,  3, fanSpeedUpButton),
    NORDA_ROW(AutoDualIcon,  0, autoMainZoneTempIncButton),
    NORDA_ROW(AutoDualIcon,  1, autoSecZoneTempIncButton),
    NORDA_ROW(AutoDualIcon,  2, autoMainZoneTempDecButton),
    NORDA_ROW(AutoDualIcon,  3, autoSecZoneTempDecButton),
    NORDA_ROW(AutoDualIcon,  4, fanSpeedDownButton),
    NORDA_ROW(AutoDualIcon,  5, fanSpeedUpButton),
};
static constexpr ClickedCommand clickedCommands[] = {
    NORDA_ROW(ManualIcon,  4, triggerLHeatedSeatButton),
    NORDA_ROW(ManualIcon,  5, triggerRHeatedSeatButton),
    NORDA_ROW(ManualIcon,  6, triggerLCooledSeatButton),
    NORDA_ROW(ManualIcon,  7, triggerRCooledSeatButton),
    NORDA_ROW(ManualIcon,  8, triggerVentPositionButton),
    NORDA_ROW(ManualIcon,  9, triggerRecircFreshButton),
    NORDA_ROW(ManualIcon, 10, triggerHeatedSteeringWheelButton),
    NORDA_ROW(ManualIcon, 11, triggerClimateOnOffButton),
    NORDA_ROW(ManualIcon, 12, triggerFrontDefrostButton),
    NORDA_ROW(ManualIcon, 13, triggerRearDefrostButton),
    NORDA_ROW(ManualText,  0, triggerACButton),
    NORDA_ROW(ManualText,  1, triggerMaxACButton),
    NORDA_ROW(AutoDualIcon,  6, triggerVentPositionButton),
    NORDA_ROW(AutoDualIcon,  7, triggerRecircFreshButton),
    NORDA_ROW(AutoDualIcon,  8, triggerHeatedSteeringWheelButton),
    NORDA_ROW(AutoDualIcon,  9, triggerClimateOnOffButton),
    NORDA_ROW(AutoDualIcon, 10, triggerLHeatedSeatButton),
    NORDA_ROW(AutoDualIcon, 11, triggerRHeatedSeatButton),
    NORDA_ROW(AutoDualIcon, 12, triggerLCooledSeatButton),
    NORDA_ROW(AutoDualIcon, 13, triggerRCooledSeatButton),
    NORDA_ROW(AutoDualIcon, 14, triggerFrontDefrostButton),
    NORDA_ROW(AutoDualIcon, 15, triggerRearDefrostButton),
    NORDA_ROW(AutoDualText,  0, triggerAutoClimateOnOffButton),
    NORDA_ROW(AutoDualText,  1, triggerDualButton),
    NORDA_ROW(AutoDualText,  2, triggerACButton),
    NORDA_ROW(AutoDualText,  3, triggerMaxACButton),
};
#undef NORDA_ROW
// clang-format on

template <typename Row, size_t Count>
static const Row *findKey(const Row (&rows)[Count], ClimateGroup group, int id)
{
    const auto *found = std::find_if(std::begin(rows), std::end(rows), [=](const Row &row) {
        return row.group == group && row.id == id;
    });
    return found == std::end(rows) ? nullptr : found;
}

const HeldCommand *heldCommand(ClimateGroup group, int id)
{
    return findKey(heldCommands, group, id);
}

const ClickedCommand *clickedCommand(ClimateGroup group, int id)
{
    return findKey(clickedCommands, group, id);
}

} // namespace norda
