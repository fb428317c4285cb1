#include "norda/vtqadaptor.h"

#include "calllog.h"

namespace norda {

/** A command leaves for the module by way of the call log, where the module listens. */
template <typename... Arguments>
static void send(const char *operation, const Arguments &...arguments)
{
    CallLog::report(operation, arguments...);
}

VtqAdaptor::VtqAdaptor() = default;

VtqAdaptor *VtqAdaptor::instance()
{
    static auto *const adaptor = new VtqAdaptor;
    return adaptor;
}

// clang-format off
void VtqAdaptor::connectService() { send("norda::VtqAdaptor::connectService"); }
void VtqAdaptor::gaugesListBack() { send("norda::VtqAdaptor::gaugesListBack"); }
void VtqAdaptor::vehicleListBack() { send("norda::VtqAdaptor::vehicleListBack"); }
void VtqAdaptor::parkingListBack() { send("norda::VtqAdaptor::parkingListBack"); }
void VtqAdaptor::climateListBack() { send("norda::VtqAdaptor::climateListBack"); }
void VtqAdaptor::secoundclimateListBack() { send("norda::VtqAdaptor::secoundclimateListBack"); }
void VtqAdaptor::gaugesListPrevious() { send("norda::VtqAdaptor::gaugesListPrevious"); }
void VtqAdaptor::vehicleListPrevious() { send("norda::VtqAdaptor::vehicleListPrevious"); }
void VtqAdaptor::parkingListPrevious() { send("norda::VtqAdaptor::parkingListPrevious"); }
void VtqAdaptor::climateListPrevious() { send("norda::VtqAdaptor::climateListPrevious"); }
void VtqAdaptor::secoundclimateListPrevious() { send("norda::VtqAdaptor::secoundclimateListPrevious"); }
void VtqAdaptor::gaugesListNext() { send("norda::VtqAdaptor::gaugesListNext"); }
void VtqAdaptor::vehicleListNext() { send("norda::VtqAdaptor::vehicleListNext"); }
void VtqAdaptor::parkingListNext() { send("norda::VtqAdaptor::parkingListNext"); }
void VtqAdaptor::climateListNext() { send("norda::VtqAdaptor::climateListNext"); }
void VtqAdaptor::secoundclimateListNext() { send("norda::VtqAdaptor::secoundclimateListNext"); }
void VtqAdaptor::gaugesSettings() { send("norda::VtqAdaptor::gaugesSettings"); }
void VtqAdaptor::vehicleSettings() { send("norda::VtqAdaptor::vehicleSettings"); }
void VtqAdaptor::parkingSettings() { send("norda::VtqAdaptor::parkingSettings"); }
void VtqAdaptor::climateSettings() { send("norda::VtqAdaptor::climateSettings"); }
void VtqAdaptor::secoundclimateSettings() { send("norda::VtqAdaptor::secoundclimateSettings"); }
void VtqAdaptor::gaugesCustomControls(unsigned char control, unsigned char action) { send("norda::VtqAdaptor::gaugesCustomControls", control, action); }
void VtqAdaptor::vehicleCustomControls(unsigned char control, unsigned char action) { send("norda::VtqAdaptor::vehicleCustomControls", control, action); }
void VtqAdaptor::parkingCustomControls(unsigned char control, unsigned char action) { send("norda::VtqAdaptor::parkingCustomControls", control, action); }
void VtqAdaptor::customCtrlsButton(unsigned char control, unsigned char action) { send("norda::VtqAdaptor::customCtrlsButton", control, action); }
void VtqAdaptor::secoundcustomCtrlsButton(unsigned char control, unsigned char action) { send("norda::VtqAdaptor::secoundcustomCtrlsButton", control, action); }
void VtqAdaptor::requestGaugesInfo() { send("norda::VtqAdaptor::requestGaugesInfo"); }
void VtqAdaptor::requestVehicleInfo() { send("norda::VtqAdaptor::requestVehicleInfo"); }
void VtqAdaptor::requestParkingInfo() { send("norda::VtqAdaptor::requestParkingInfo"); }
void VtqAdaptor::requestMainClimateInfo() { send("norda::VtqAdaptor::requestMainClimateInfo"); }
void VtqAdaptor::requestSecondClimateInfo() { send("norda::VtqAdaptor::requestSecondClimateInfo"); }
void VtqAdaptor::NordaData_Request(int page) { send("norda::VtqAdaptor::NordaData_Request", page); }
void VtqAdaptor::NordaSetSelectedLineNumber(int line) { send("norda::VtqAdaptor::NordaSetSelectedLineNumber", line); }
void VtqAdaptor::centerGaugeMenu(unsigned char action) { send("norda::VtqAdaptor::centerGaugeMenu", action); }
void VtqAdaptor::gaugeTLMenu(unsigned char action) { send("norda::VtqAdaptor::gaugeTLMenu", action); }
void VtqAdaptor::gaugeTRMenu(unsigned char action) { send("norda::VtqAdaptor::gaugeTRMenu", action); }
void VtqAdaptor::gaugeBLMenu(unsigned char action) { send("norda::VtqAdaptor::gaugeBLMenu", action); }
void VtqAdaptor::gaugeBRMenu(unsigned char action) { send("norda::VtqAdaptor::gaugeBRMenu", action); }
void VtqAdaptor::onClickCheckEngineBtn() { send("norda::VtqAdaptor::onClickCheckEngineBtn"); }
void VtqAdaptor::triggerClimateOnOffButton(bool on) { send("norda::VtqAdaptor::triggerClimateOnOffButton", on); }
void VtqAdaptor::triggerAutoClimateOnOffButton(bool on) { send("norda::VtqAdaptor::triggerAutoClimateOnOffButton", on); }
void VtqAdaptor::triggerACButton(bool on) { send("norda::VtqAdaptor::triggerACButton", on); }
void VtqAdaptor::triggerMaxACButton(bool on) { send("norda::VtqAdaptor::triggerMaxACButton", on); }
void VtqAdaptor::triggerDualButton(bool on) { send("norda::VtqAdaptor::triggerDualButton", on); }
void VtqAdaptor::triggerFrontDefrostButton(bool on) { send("norda::VtqAdaptor::triggerFrontDefrostButton", on); }
void VtqAdaptor::triggerRearDefrostButton(bool on) { send("norda::VtqAdaptor::triggerRearDefrostButton", on); }
void VtqAdaptor::triggerRecircFreshButton(bool on) { send("norda::VtqAdaptor::triggerRecircFreshButton", on); }
void VtqAdaptor::triggerVentPositionButton(bool on) { send("norda::VtqAdaptor::triggerVentPositionButton", on); }
void VtqAdaptor::triggerHeatedSteeringWheelButton(bool on) { send("norda::VtqAdaptor::triggerHeatedSteeringWheelButton", on); }
void VtqAdaptor::triggerLHeatedSeatButton(bool on) { send("norda::VtqAdaptor::triggerLHeatedSeatButton", on); }
void VtqAdaptor::triggerRHeatedSeatButton(bool on) { send("norda::VtqAdaptor::triggerRHeatedSeatButton", on); }
void VtqAdaptor::triggerLCooledSeatButton(bool on) { send("norda::VtqAdaptor::triggerLCooledSeatButton", on); }
void VtqAdaptor::triggerRCooledSeatButton(bool on) { send("norda::VtqAdaptor::triggerRCooledSeatButton", on); }
void VtqAdaptor::fanSpeedUpButton(bool pressed, bool released) { send("norda::VtqAdaptor::fanSpeedUpButton", pressed, released); }
void VtqAdaptor::fanSpeedDownButton(bool pressed, bool released) { send("norda::VtqAdaptor::fanSpeedDownButton", pressed, released); }
void VtqAdaptor::manTempIncButton(bool pressed, bool released) { send("norda::VtqAdaptor::manTempIncButton", pressed, released); }
void VtqAdaptor::manTempDecButton(bool pressed, bool released) { send("norda::VtqAdaptor::manTempDecButton", pressed, released); }
void VtqAdaptor::autoMainZoneTempIncButton(bool pressed, bool released) { send("norda::VtqAdaptor::autoMainZoneTempIncButton", pressed, released); }
void VtqAdaptor::autoMainZoneTempDecButton(bool pressed, bool released) { send("norda::VtqAdaptor::autoMainZoneTempDecButton", pressed, released); }
void VtqAdaptor::autoSecZoneTempIncButton(bool pressed, bool released) { send("norda::VtqAdaptor::autoSecZoneTempIncButton", pressed, released); }
void VtqAdaptor::autoSecZoneTempDecButton(bool pressed, bool released) { send("norda::VtqAdaptor::autoSecZoneTempDecButton", pressed, released); }
void VtqAdaptor::rearZoneButton(bool pressed, bool released) { send("norda::VtqAdaptor::rearZoneButton", pressed, released); }
void VtqAdaptor::manTempValue(int value, bool set) { send("norda::VtqAdaptor::manTempValue", value, set); }
void VtqAdaptor::fanDirectValue(int value, bool set) { send("norda::VtqAdaptor::fanDirectValue", value, set); }
void VtqAdaptor::secoundtriggerClimateOnOffButton(bool on) { send("norda::VtqAdaptor::secoundtriggerClimateOnOffButton", on); }
void VtqAdaptor::secoundtriggerAutoClimateOnOffButton(bool on) { send("norda::VtqAdaptor::secoundtriggerAutoClimateOnOffButton", on); }
void VtqAdaptor::secoundtriggerACButton(bool on) { send("norda::VtqAdaptor::secoundtriggerACButton", on); }
void VtqAdaptor::secoundtriggerMaxACButton(bool on) { send("norda::VtqAdaptor::secoundtriggerMaxACButton", on); }
void VtqAdaptor::secoundtriggerDualButton(bool on) { send("norda::VtqAdaptor::secoundtriggerDualButton", on); }
void VtqAdaptor::secoundtriggerFrontDefrostButton(bool on) { send("norda::VtqAdaptor::secoundtriggerFrontDefrostButton", on); }
void VtqAdaptor::secoundtriggerRearDefrostButton(bool on) { send("norda::VtqAdaptor::secoundtriggerRearDefrostButton", on); }
void VtqAdaptor::secoundtriggerRecircFreshButton(bool on) { send("norda::VtqAdaptor::secoundtriggerRecircFreshButton", on); }
void VtqAdaptor::secoundtriggerVentPositionButton(bool on) { send("norda::VtqAdaptor::secoundtriggerVentPositionButton", on); }
void VtqAdaptor::secoundtriggerHeatedSteeringWheelButton(bool on) { send("norda::VtqAdaptor::secoundtriggerHeatedSteeringWheelButton", on); }
void VtqAdaptor::secoundtriggerLHeatedSeatButton(bool on) { send("norda::VtqAdaptor::secoundtriggerLHeatedSeatButton", on); }
void VtqAdaptor::secoundtriggerRHeatedSeatButton(bool on) { send("norda::VtqAdaptor::secoundtriggerRHeatedSeatButton", on); }
void VtqAdaptor::secoundtriggerLCooledSeatButton(bool on) { send("norda::VtqAdaptor::secoundtriggerLCooledSeatButton", on); }
void VtqAdaptor::secoundtriggerRCooledSeatButton(bool on) { send("norda::VtqAdaptor::secoundtriggerRCooledSeatButton", on); }
void VtqAdaptor::secoundfanSpeedUpButton(bool pressed, bool released) { send("norda::VtqAdaptor::secoundfanSpeedUpButton", pressed, released); }
void VtqAdaptor::secoundfanSpeedDownButton(bool pressed, bool released) { send("norda::VtqAdaptor::secoundfanSpeedDownButton", pressed, released); }
void VtqAdaptor::secoundmanTempIncButton(bool pressed, bool released) { send("norda::VtqAdaptor::secoundmanTempIncButton", pressed, released); }
void VtqAdaptor::secoundmanTempDecButton(bool pressed, bool released) { send("norda::VtqAdaptor::secoundmanTempDecButton", pressed, released); }
void VtqAdaptor::secoundautoMainZoneTempIncButton(bool pressed, bool released) { send("norda::VtqAdaptor::secoundautoMainZoneTempIncButton", pressed, released); }
void VtqAdaptor::secoundautoMainZoneTempDecButton(bool pressed, bool released) { send("norda::VtqAdaptor::secoundautoMainZoneTempDecButton", pressed, released); }
void VtqAdaptor::secoundautoSecZoneTempIncButton(bool pressed, bool released) { send("norda::VtqAdaptor::secoundautoSecZoneTempIncButton", pressed, released); }
void VtqAdaptor::secoundautoSecZoneTempDecButton(bool pressed, bool released) { send("norda::VtqAdaptor::secoundautoSecZoneTempDecButton", pressed, released); }
void VtqAdaptor::secoundrearZoneButton(bool pressed, bool released) { send("norda::VtqAdaptor::secoundrearZoneButton", pressed, released); }
void VtqAdaptor::secoundmanTempValue(int value, bool set) { send("norda::VtqAdaptor::secoundmanTempValue", value, set); }
void VtqAdaptor::secoundfanDirectValue(int value, bool set) { send("norda::VtqAdaptor::secoundfanDirectValue", value, set); }
void VtqAdaptor::NordatriggerRearDefrostButton(const QMap<int, int> &bytes) { send("norda::VtqAdaptor::NordatriggerRearDefrostButton", bytes); }
// clang-format on

} // namespace norda
