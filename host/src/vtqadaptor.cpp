#include "norda/vtqadaptor.h"

#include "calllog.h"
#include "serviceconnection.h"

namespace norda {

/** A command goes to the call log, where the module receives it. @param command  the method's name
 */
template <typename... Arguments>
static void send(const char *command, const Arguments &...arguments)
{
    CallLog::report(QByteArray("norda::VtqAdaptor::") + command, arguments...);
}

static void registerArgumentTypes()
{
    qRegisterMetaType<QList<int>>();
    qRegisterMetaType<QMap<int, int>>();
    qRegisterMetaType<QMap<int, bool>>();
}
Q_CONSTRUCTOR_FUNCTION(registerArgumentTypes)

VtqAdaptor::VtqAdaptor() = default;

VtqAdaptor *VtqAdaptor::instance()
{
    static auto *const adaptor = new VtqAdaptor;
    return adaptor;
}

void VtqAdaptor::connectService()
{
    send(__func__);
    ServiceConnection::instance()->open();
}

// clang-format off
void VtqAdaptor::gaugesListBack() { send(__func__); }
void VtqAdaptor::vehicleListBack() { send(__func__); }
void VtqAdaptor::parkingListBack() { send(__func__); }
void VtqAdaptor::climateListBack() { send(__func__); }
void VtqAdaptor::secoundclimateListBack() { send(__func__); }
void VtqAdaptor::gaugesListPrevious() { send(__func__); }
void VtqAdaptor::vehicleListPrevious() { send(__func__); }
void VtqAdaptor::parkingListPrevious() { send(__func__); }
void VtqAdaptor::climateListPrevious() { send(__func__); }
void VtqAdaptor::secoundclimateListPrevious() { send(__func__); }
void VtqAdaptor::gaugesListNext() { send(__func__); }
void VtqAdaptor::vehicleListNext() { send(__func__); }
void VtqAdaptor::parkingListNext() { send(__func__); }
void VtqAdaptor::climateListNext() { send(__func__); }
void VtqAdaptor::secoundclimateListNext() { send(__func__); }
void VtqAdaptor::gaugesSettings() { send(__func__); }
void VtqAdaptor::vehicleSettings() { send(__func__); }
void VtqAdaptor::parkingSettings() { send(__func__); }
void VtqAdaptor::climateSettings() { send(__func__); }
void VtqAdaptor::secoundclimateSettings() { send(__func__); }
void VtqAdaptor::gaugesCustomControls(unsigned char control, unsigned char action) { send(__func__, control, action); }
void VtqAdaptor::vehicleCustomControls(unsigned char control, unsigned char action) { send(__func__, control, action); }
void VtqAdaptor::parkingCustomControls(unsigned char control, unsigned char action) { send(__func__, control, action); }
void VtqAdaptor::customCtrlsButton(unsigned char control, unsigned char action) { send(__func__, control, action); }
void VtqAdaptor::secoundcustomCtrlsButton(unsigned char control, unsigned char action) { send(__func__, control, action); }
void VtqAdaptor::requestGaugesInfo() { send(__func__); }
void VtqAdaptor::requestVehicleInfo() { send(__func__); }
void VtqAdaptor::requestParkingInfo() { send(__func__); }
void VtqAdaptor::requestMainClimateInfo() { send(__func__); }
void VtqAdaptor::requestSecondClimateInfo() { send(__func__); }
void VtqAdaptor::NordaData_Request(int page) { send(__func__, page); }
void VtqAdaptor::NordaSetSelectedLineNumber(int line) { send(__func__, line); }
void VtqAdaptor::centerGaugeMenu(unsigned char action) { send(__func__, action); }
void VtqAdaptor::gaugeTLMenu(unsigned char action) { send(__func__, action); }
void VtqAdaptor::gaugeTRMenu(unsigned char action) { send(__func__, action); }
void VtqAdaptor::gaugeBLMenu(unsigned char action) { send(__func__, action); }
void VtqAdaptor::gaugeBRMenu(unsigned char action) { send(__func__, action); }
void VtqAdaptor::onClickCheckEngineBtn() { send(__func__); }
void VtqAdaptor::triggerClimateOnOffButton(bool on) { send(__func__, on); }
void VtqAdaptor::triggerAutoClimateOnOffButton(bool on) { send(__func__, on); }
void VtqAdaptor::triggerACButton(bool on) { send(__func__, on); }
void VtqAdaptor::triggerMaxACButton(bool on) { send(__func__, on); }
void VtqAdaptor::triggerDualButton(bool on) { send(__func__, on); }
void VtqAdaptor::triggerFrontDefrostButton(bool on) { send(__func__, on); }
void VtqAdaptor::triggerRearDefrostButton(bool on) { send(__func__, on); }
void VtqAdaptor::triggerRecircFreshButton(bool on) { send(__func__, on); }
void VtqAdaptor::triggerVentPositionButton(bool on) { send(__func__, on); }
void VtqAdaptor::triggerHeatedSteeringWheelButton(bool on) { send(__func__, on); }
void VtqAdaptor::triggerLHeatedSeatButton(bool on) { send(__func__, on); }
void VtqAdaptor::triggerRHeatedSeatButton(bool on) { send(__func__, on); }
void VtqAdaptor::triggerLCooledSeatButton(bool on) { send(__func__, on); }
void VtqAdaptor::triggerRCooledSeatButton(bool on) { send(__func__, on); }
void VtqAdaptor::fanSpeedUpButton(bool pressed, bool released) { send(__func__, pressed, released); }
void VtqAdaptor::fanSpeedDownButton(bool pressed, bool released) { send(__func__, pressed, released); }
void VtqAdaptor::manTempIncButton(bool pressed, bool released) { send(__func__, pressed, released); }
void VtqAdaptor::manTempDecButton(bool pressed, bool released) { send(__func__, pressed, released); }
void VtqAdaptor::autoMainZoneTempIncButton(bool pressed, bool released) { send(__func__, pressed, released); }
void VtqAdaptor::autoMainZoneTempDecButton(bool pressed, bool released) { send(__func__, pressed, released); }
void VtqAdaptor::autoSecZoneTempIncButton(bool pressed, bool released) { send(__func__, pressed, released); }
void VtqAdaptor::autoSecZoneTempDecButton(bool pressed, bool released) { send(__func__, pressed, released); }
void VtqAdaptor::rearZoneButton(bool pressed, bool released) { send(__func__, pressed, released); }
void VtqAdaptor::manTempValue(int value, bool set) { send(__func__, value, set); }
void VtqAdaptor::fanDirectValue(int value, bool set) { send(__func__, value, set); }
void VtqAdaptor::secoundtriggerClimateOnOffButton(bool on) { send(__func__, on); }
void VtqAdaptor::secoundtriggerAutoClimateOnOffButton(bool on) { send(__func__, on); }
void VtqAdaptor::secoundtriggerACButton(bool on) { send(__func__, on); }
void VtqAdaptor::secoundtriggerMaxACButton(bool on) { send(__func__, on); }
void VtqAdaptor::secoundtriggerDualButton(bool on) { send(__func__, on); }
void VtqAdaptor::secoundtriggerFrontDefrostButton(bool on) { send(__func__, on); }
void VtqAdaptor::secoundtriggerRearDefrostButton(bool on) { send(__func__, on); }
void VtqAdaptor::secoundtriggerRecircFreshButton(bool on) { send(__func__, on); }
void VtqAdaptor::secoundtriggerVentPositionButton(bool on) { send(__func__, on); }
void VtqAdaptor::secoundtriggerHeatedSteeringWheelButton(bool on) { send(__func__, on); }
void VtqAdaptor::secoundtriggerLHeatedSeatButton(bool on) { send(__func__, on); }
void VtqAdaptor::secoundtriggerRHeatedSeatButton(bool on) { send(__func__, on); }
void VtqAdaptor::secoundtriggerLCooledSeatButton(bool on) { send(__func__, on); }
void VtqAdaptor::secoundtriggerRCooledSeatButton(bool on) { send(__func__, on); }
void VtqAdaptor::secoundfanSpeedUpButton(bool pressed, bool released) { send(__func__, pressed, released); }
void VtqAdaptor::secoundfanSpeedDownButton(bool pressed, bool released) { send(__func__, pressed, released); }
void VtqAdaptor::secoundmanTempIncButton(bool pressed, bool released) { send(__func__, pressed, released); }
void VtqAdaptor::secoundmanTempDecButton(bool pressed, bool released) { send(__func__, pressed, released); }
void VtqAdaptor::secoundautoMainZoneTempIncButton(bool pressed, bool released) { send(__func__, pressed, released); }
void VtqAdaptor::secoundautoMainZoneTempDecButton(bool pressed, bool released) { send(__func__, pressed, released); }
void VtqAdaptor::secoundautoSecZoneTempIncButton(bool pressed, bool released) { send(__func__, pressed, released); }
void VtqAdaptor::secoundautoSecZoneTempDecButton(bool pressed, bool released) { send(__func__, pressed, released); }
void VtqAdaptor::secoundrearZoneButton(bool pressed, bool released) { send(__func__, pressed, released); }
void VtqAdaptor::secoundmanTempValue(int value, bool set) { send(__func__, value, set); }
void VtqAdaptor::secoundfanDirectValue(int value, bool set) { send(__func__, value, set); }
void VtqAdaptor::NordatriggerRearDefrostButton(const QMap<int, int> &bytes) { send(__func__, bytes); }
// clang-format on

} // namespace norda
