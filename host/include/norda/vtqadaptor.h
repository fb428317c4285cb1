#pragma once

#include "nordahost_global.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QObject>
#include <QStringList>
#include <QVariant>

namespace norda {

/**
 * The service adaptor: the link between the plugin and the vehicle module.
 *
 * Signals carry every piece of vehicle data to the screens; the methods carry every touch
 * back to the module. All of it happens on the GUI thread. A command that the module ignores has no
 * effect and reports nothing: commands return no result and never time out.
 *
 * Byte arrays are sequences of unsigned bytes. Temperatures are in degrees Fahrenheit. A gauge
 * position is in the units of that gauge: engine speed in hundreds of revolutions per minute (0 to
 * 100), temperatures in degrees (0 to 250), load in percent (0 to 100).
 */
class NORDAHOST_EXPORT VtqAdaptor : public QObject
{
    Q_OBJECT
public:
    /** The one adaptor of the process. It exists before any screen and is never destroyed. */
    static VtqAdaptor *instance();

    /** Opens the link to the vehicle service. The plugin root calls it once, from `create()`. */
    void connectService();

    // Lists of the module: the user leaves one or pages through it

    /** Gauges: leaves the module's list. */
    void gaugesListBack();
    /** Vehicle information: leaves the module's list. */
    void vehicleListBack();
    /** Parking assist: leaves the module's list. */
    void parkingListBack();
    /** Climate, front zone: leaves the module's list. */
    void climateListBack();
    /** Climate, second zone: leaves the module's list. */
    void secoundclimateListBack();
    /** Gauges: requests the list's previous page. */
    void gaugesListPrevious();
    /** Vehicle information: requests the list's previous page. */
    void vehicleListPrevious();
    /** Parking assist: requests the list's previous page. */
    void parkingListPrevious();
    /** Climate, front zone: requests the list's previous page. */
    void climateListPrevious();
    /** Climate, second zone: requests the list's previous page. */
    void secoundclimateListPrevious();
    /** Gauges: requests the list's next page. */
    void gaugesListNext();
    /** Vehicle information: requests the list's next page. */
    void vehicleListNext();
    /** Parking assist: requests the list's next page. */
    void parkingListNext();
    /** Climate, front zone: requests the list's next page. */
    void climateListNext();
    /** Climate, second zone: requests the list's next page. */
    void secoundclimateListNext();

    // Settings, custom controls, resend

    /** Gauges: the screen's settings key was clicked. */
    void gaugesSettings();
    /** Vehicle information: the screen's settings key was clicked. */
    void vehicleSettings();
    /** Parking assist: the screen's settings key was clicked. */
    void parkingSettings();
    /** Climate, front zone: the screen's settings key was clicked. */
    void climateSettings();
    /** Climate, second zone: the screen's settings key was clicked. */
    void secoundclimateSettings();
    /**
     * Gauges: a module-defined key was touched.
     * @param control  0x12 for the first key, 0x22 for the second
     * @param action   1 pressed, 2 released
     */
    void gaugesCustomControls(unsigned char control, unsigned char action);
    /**
     * Vehicle information: a module-defined key was touched.
     * @param control  0x12 for the first key, 0x22 for the second
     * @param action   1 pressed, 2 released
     */
    void vehicleCustomControls(unsigned char control, unsigned char action);
    /**
     * Parking assist: a module-defined key was touched.
     * @param control  0x12 for the first key, 0x22 for the second
     * @param action   1 pressed, 2 released
     */
    void parkingCustomControls(unsigned char control, unsigned char action);
    /**
     * Climate, front zone: a module-defined key was touched.
     * @param control  0x12 for the first key, 0x22 for the second
     * @param action   1 pressed, 2 released
     */
    void customCtrlsButton(unsigned char control, unsigned char action);
    /**
     * Climate, second zone: a module-defined key was touched.
     * @param control  0x12 for the first key, 0x22 for the second
     * @param action   1 pressed, 2 released
     */
    void secoundcustomCtrlsButton(unsigned char control, unsigned char action);
    /** Asks the module to resend the state of the gauges: on every connection and entry. */
    void requestGaugesInfo();
    /** Asks the module to resend the vehicle information: at start-up and on every entry. */
    void requestVehicleInfo();
    /** Asks the module to resend the parking state: on construction, entry and resume. */
    void requestParkingInfo();
    /** Asks the module to resend the state of the front climate zone: on entry and resume. */
    void requestMainClimateInfo();
    /** Asks the module to resend the state of the second climate zone: on entry and resume. */
    void requestSecondClimateInfo();

    // Module pages

    /**
     * A page of the module is about to open.
     * @param page  13 configuration menu, 5 version information
     */
    void NordaData_Request(int page);
    /**
     * A row of the module's configuration menu was chosen.
     * @param line  the row's line number; the title is line 1, the first row line 2
     */
    void NordaSetSelectedLineNumber(int line);

    // Gauges

    /** The centre gauge was touched. @param action  1 pressed, 2 released */
    void centerGaugeMenu(unsigned char action);
    /** The top left gauge was touched. @param action  1 pressed, 2 released */
    void gaugeTLMenu(unsigned char action);
    /** The top right gauge was touched. @param action  1 pressed, 2 released */
    void gaugeTRMenu(unsigned char action);
    /** The bottom left gauge was touched. @param action  1 pressed, 2 released */
    void gaugeBLMenu(unsigned char action);
    /** The bottom right gauge was touched. @param action  1 pressed, 2 released */
    void gaugeBRMenu(unsigned char action);

    // Vehicle information

    /** The check-engine button was clicked. */
    void onClickCheckEngineBtn();

    // Climate, front zone: one command per key

    /** System on/off, front zone. @param on  true on a click */
    void triggerClimateOnOffButton(bool on);
    /** Automatic mode, front zone. @param on  true on a click */
    void triggerAutoClimateOnOffButton(bool on);
    /** A/C, front zone. @param on  true on a click */
    void triggerACButton(bool on);
    /** Max A/C, front zone. @param on  true on a click */
    void triggerMaxACButton(bool on);
    /** Dual mode, front zone. @param on  true on a click */
    void triggerDualButton(bool on);
    /** Front defroster, front zone. @param on  true on a click */
    void triggerFrontDefrostButton(bool on);
    /** Rear defroster, front zone. @param on  true on a click */
    void triggerRearDefrostButton(bool on);
    /** Recirculation or fresh air, front zone. @param on  true on a click */
    void triggerRecircFreshButton(bool on);
    /** Vent mode, front zone. @param on  true on a click */
    void triggerVentPositionButton(bool on);
    /** Heated steering wheel, front zone. @param on  true on a click */
    void triggerHeatedSteeringWheelButton(bool on);
    /** Left seat heating, front zone. @param on  true on a click */
    void triggerLHeatedSeatButton(bool on);
    /** Right seat heating, front zone. @param on  true on a click */
    void triggerRHeatedSeatButton(bool on);
    /** Left seat cooling, front zone. @param on  true on a click */
    void triggerLCooledSeatButton(bool on);
    /** Right seat cooling, front zone. @param on  true on a click */
    void triggerRCooledSeatButton(bool on);
    /** Fan up, front zone. @param pressed, released  one of them is true */
    void fanSpeedUpButton(bool pressed, bool released);
    /** Fan down, front zone. @param pressed, released  one of them is true */
    void fanSpeedDownButton(bool pressed, bool released);
    /** Temperature up (manual), front zone. @param pressed, released  one of them is true */
    void manTempIncButton(bool pressed, bool released);
    /** Temperature down (manual), front zone. @param pressed, released  one of them is true */
    void manTempDecButton(bool pressed, bool released);
    /** Driver temperature up, front zone. @param pressed, released  one of them is true */
    void autoMainZoneTempIncButton(bool pressed, bool released);
    /** Driver temperature down, front zone. @param pressed, released  one of them is true */
    void autoMainZoneTempDecButton(bool pressed, bool released);
    /** Passenger temperature up, front zone. @param pressed, released  one of them is true */
    void autoSecZoneTempIncButton(bool pressed, bool released);
    /** Passenger temperature down, front zone. @param pressed, released  one of them is true */
    void autoSecZoneTempDecButton(bool pressed, bool released);
    /** Rear-zone key, front zone. @param pressed, released  one of them is true */
    void rearZoneButton(bool pressed, bool released);
    /** A temperature set directly, front zone. @param value  0 to 255  @param set  true */
    void manTempValue(int value, bool set);
    /** A fan level set directly, front zone. @param value  0 to 255  @param set  true */
    void fanDirectValue(int value, bool set);

    // Climate, second zone: one command per key

    /** System on/off, second zone. @param on  true on a click */
    void secoundtriggerClimateOnOffButton(bool on);
    /** Automatic mode, second zone. @param on  true on a click */
    void secoundtriggerAutoClimateOnOffButton(bool on);
    /** A/C, second zone. @param on  true on a click */
    void secoundtriggerACButton(bool on);
    /** Max A/C, second zone. @param on  true on a click */
    void secoundtriggerMaxACButton(bool on);
    /** Dual mode, second zone. @param on  true on a click */
    void secoundtriggerDualButton(bool on);
    /** Front defroster, second zone. @param on  true on a click */
    void secoundtriggerFrontDefrostButton(bool on);
    /** Rear defroster, second zone. @param on  true on a click */
    void secoundtriggerRearDefrostButton(bool on);
    /** Recirculation or fresh air, second zone. @param on  true on a click */
    void secoundtriggerRecircFreshButton(bool on);
    /** Vent mode, second zone. @param on  true on a click */
    void secoundtriggerVentPositionButton(bool on);
    /** Heated steering wheel, second zone. @param on  true on a click */
    void secoundtriggerHeatedSteeringWheelButton(bool on);
    /** Left seat heating, second zone. @param on  true on a click */
    void secoundtriggerLHeatedSeatButton(bool on);
    /** Right seat heating, second zone. @param on  true on a click */
    void secoundtriggerRHeatedSeatButton(bool on);
    /** Left seat cooling, second zone. @param on  true on a click */
    void secoundtriggerLCooledSeatButton(bool on);
    /** Right seat cooling, second zone. @param on  true on a click */
    void secoundtriggerRCooledSeatButton(bool on);
    /** Fan up, second zone. @param pressed, released  one of them is true */
    void secoundfanSpeedUpButton(bool pressed, bool released);
    /** Fan down, second zone. @param pressed, released  one of them is true */
    void secoundfanSpeedDownButton(bool pressed, bool released);
    /** Temperature up (manual), second zone. @param pressed, released  one of them is true */
    void secoundmanTempIncButton(bool pressed, bool released);
    /** Temperature down (manual), second zone. @param pressed, released  one of them is true */
    void secoundmanTempDecButton(bool pressed, bool released);
    /** Driver temperature up, second zone. @param pressed, released  one of them is true */
    void secoundautoMainZoneTempIncButton(bool pressed, bool released);
    /** Driver temperature down, second zone. @param pressed, released  one of them is true */
    void secoundautoMainZoneTempDecButton(bool pressed, bool released);
    /** Passenger temperature up, second zone. @param pressed, released  one of them is true */
    void secoundautoSecZoneTempIncButton(bool pressed, bool released);
    /** Passenger temperature down, second zone. @param pressed, released  one of them is true */
    void secoundautoSecZoneTempDecButton(bool pressed, bool released);
    /** Rear-zone key, second zone. @param pressed, released  one of them is true */
    void secoundrearZoneButton(bool pressed, bool released);
    /** A temperature set directly, second zone. @param value  0 to 255 over the bar  @param set
     * true */
    void secoundmanTempValue(int value, bool set);
    /** A fan level set directly, second zone. @param value  0 to 255  @param set  true */
    void secoundfanDirectValue(int value, bool set);

    /**
     * The climate screen's combined key map: sent for every touch of a climate key.
     * @param bytes  byte number (4 to 10) to value (0 to 255); at most one bit of all is set
     */
    void NordatriggerRearDefrostButton(const QMap<int, int> &bytes);

signals:
    // Gauges

    /** A popup of the module: title, two text lists, bytes. */
    void gauPopUpNotify(const QString &title, const QStringList &texts, const QStringList &values,
                        const QByteArray &bytes);
    /** Titles of the five gauges: centre, top left, top right, bottom left, bottom right. */
    void gaugeTitlesNotify(const QStringList &titles);
    /** Engine speed: text, unit, position. */
    void centerGaugeValueNotify(const QString &value, const QString &unit, unsigned char position);
    /** Value of the top left gauge: the text to show and the needle's position. */
    void gaugeTLValueNotify(const QString &value, unsigned char position);
    /** The same with value and unit apart. */
    void gaugeTLValueDualNotify(const QString &value, const QString &unit, unsigned char position);
    /** Value of the top right gauge: the text to show and the needle's position. */
    void gaugeTRValueNotify(const QString &value, unsigned char position);
    /** The same with value and unit apart. */
    void gaugeTRValueDualNotify(const QString &value, const QString &unit, unsigned char position);
    /** Value of the bottom left gauge: the text to show and the needle's position. */
    void gaugeBLValueNotify(const QString &value, unsigned char position);
    /** The same with value and unit apart. */
    void gaugeBLValueDualNotify(const QString &value, const QString &unit, unsigned char position);
    /** Value of the bottom right gauge: the text to show and the needle's position. */
    void gaugeBRValueNotify(const QString &value, unsigned char position);
    /** The same with value and unit apart. */
    void gaugeBRValueDualNotify(const QString &value, const QString &unit, unsigned char position);
    /** Peak indicator: 0 hidden, any other value shown. */
    void peakIndicatorNotify(unsigned char shown);
    /** Text of the peak indicator; six characters are shown. */
    void peakIndicatorTextNotify(const QString &text);
    /** Top-bar text of the gauges screen. */
    void gauTopBarTextNotify(const QString &text);
    /** One style byte (1 needle, other arc) and one zero position (0 to 255) per gauge. */
    void gaugeGraphicalSettingNotify(const QByteArray &styles, const QByteArray &zeroPositions);
    /** Shift lamp: 0 off, any other value on. */
    void shifterArrowIndicatorNotify(unsigned char on);
    /** Colour of the peak indicator: 1 red, 2 blue, 3 orange, 4 yellow, 5 green, other default. */
    void centerGaugePeakColorNotify(unsigned char color);
    /** Captions and states (0 disabled, 1 enabled, 2 enabled and checked) of the custom keys. */
    void gauCustomControlLabelsNotify(const QStringList &captions, const QByteArray &states);
    /** A list of the module: title, bytes, row texts, row values, bytes. */
    void listInfoNotify(const QString &title, const QByteArray &types, const QStringList &rows,
                        const QList<QVariant> &values, const QByteArray &states);
    /** The active preset. */
    void activePresetStatusNotify(unsigned char preset);
    /** Position of the red line on the centre gauge. */
    void centerGaugeRedLinePositionNotify(unsigned char position);
    /** What the module shows: 0 the page itself, 1, 16, 17, 18 a list, 2 a popup. */
    void guiDisplayTypeNotify(unsigned char type);
    /**
     * Combined vehicle data, ten integers: door bits, battery volts, transmission, coolant and
     * intake temperature, engine load in percent, then the tire temperatures front left, front
     * right, rear right, rear left. Read by the gauges and the vehicle screen.
     */
    void Properties2TextInfo(QList<int> properties);

    // Vehicle information

    /** A popup of the module: title, two text lists, bytes. */
    void vehPopUpNotify(const QString &title, const QStringList &texts, const QStringList &values,
                        const QByteArray &bytes);
    /** Open doors: bits 0 to 5 hood, trunk, front left, front right, rear left, rear right. */
    void doorStatus(unsigned char bits);
    /** Battery voltage as text; five characters are shown. */
    void batteryVoltage(const QString &text);
    /** Compass heading as text. */
    void compassHeading(const QString &text);
    /**
     * Tire pressures. @param flags  bits 0 to 3 warn front left, front right, rear left, rear
     * right; bit 5: the texts are valid. @param aux  not used. @param values  the texts.
     */
    void tirePressureStatus(unsigned char flags, unsigned char aux, const QStringList &values);
    /** Tire temperatures, laid out as the pressures are. */
    void tireTemperatureStatus(unsigned char flags, unsigned char aux, const QStringList &values);
    /** Seat-belt state. */
    void seatbeltStatus(unsigned char state);
    /** Check engine: 0 disabled, 1 normal, 2 warning. */
    void checkEngineStatus(unsigned char state);
    /** Gear position. */
    void checkGearPositionStatus(unsigned char gear);
    /** Two lines of free text; two empty ones give the place back to the top-bar text. */
    void vehicleInfoText(const QString &line1, const QString &line2);
    /** Top-bar text of the vehicle screen. */
    void vehTopBarText(const QString &text);
    /** Captions and states of the custom keys. */
    void vehCustomeCtrlLabels(const QStringList &captions, const QByteArray &states);
    /** A list of the module. */
    void vehListInfo(const QString &title, const QByteArray &types, const QStringList &rows,
                     const QList<QVariant> &values, const QByteArray &states);
    /** What the module shows, coded as `guiDisplayTypeNotify` is. */
    void vehGuiDisplayType(unsigned char type);

    // Parking assist

    /** A popup of the module: title, two text lists, bytes. */
    void parkPopUpNotify(const QString &title, const QStringList &texts, const QStringList &values,
                         const QByteArray &bytes);
    /** Top-bar text of the parking screen. */
    void parkingTopBarText(const QString &text);
    /** Four raw distances, 0 to 255: left, left middle, right middle, right. */
    void parkingDistanceFront(const QByteArray &distances);
    /** Distances along the left side. */
    void parkingDistanceLeft(const QByteArray &distances);
    /** Distances along the right side. */
    void parkingDistanceRight(const QByteArray &distances);
    /** Two bytes: zone code (0 to 10) and level (0 to 4). Carries the front zones too. */
    void parkingDistanceRear(const QByteArray &zoneAndLevel);
    /** Captions and states of the custom keys. */
    void parkCustomControlLabels(const QStringList &captions, const QByteArray &states);
    /** A list of the module. */
    void parkListInfo(const QString &title, const QByteArray &types, const QStringList &rows,
                      const QList<QVariant> &values, const QByteArray &states);
    /** What the module shows, coded as `guiDisplayTypeNotify` is. */
    void parkGuiDisplayType(unsigned char type);

    // Climate

    /** The whole climate state of both zones, 23 integers by position. */
    void NordaClimateCtrlStatusNotify(const QList<int> &status);
    /** The front zone's kind of climate control changed. */
    void climateType();
    /** The second zone's kind of climate control changed. */
    void secondclimateType();

    // The module's menu and its About data

    /**
     * One line of the configuration menu. @param info  line type (1 title, 2 and 3 items), unused,
     * line number. @param label, value  texts, each joined without a separator.
     */
    void NordaConfigMenuTextInfo(const QList<int> &info, const QStringList &label,
                                 const QStringList &value);
    /** Firmware version of the module; entries 1 to 3 are its parts. */
    void NordaVerInfo(const QStringList &version);
    /** The module's clock, twelve digits as single entries. */
    void TimeInfo(const QStringList &digits);

private:
    VtqAdaptor();
};

} // namespace norda
