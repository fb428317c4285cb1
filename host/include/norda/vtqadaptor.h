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

    // Commands are slots: what carries them to the module finds them in the meta-object.
public slots:
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
    /** A temperature set directly, second zone. @param value  0 to 255  @param set  true */
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

    /**
     * A popup of the module on the gauges screen.
     * @param title   its title
     * @param texts   its texts
     * @param values  the values beside them
     * @param bytes   its style, not decoded by the screens
     */
    void gauPopUpNotify(const QString &title, const QStringList &texts, const QStringList &values,
                        const QByteArray &bytes);
    /**
     * Titles of the five gauges.
     * @param titles  by gauge: 0 centre, 1 top left, 2 top right, 3 bottom left, 4 bottom right
     */
    void gaugeTitlesNotify(const QStringList &titles);
    /**
     * Engine speed, on the centre gauge.
     * @param value     the text to show
     * @param unit      the unit to show
     * @param position  the needle's position, in hundreds of revolutions per minute
     */
    void centerGaugeValueNotify(const QString &value, const QString &unit, unsigned char position);
    /**
     * The top left gauge.
     * @param value     the text to show
     * @param position  the needle's position, in the units of the gauge
     */
    void gaugeTLValueNotify(const QString &value, unsigned char position);
    /**
     * The top left gauge, with value and unit apart.
     * @param value     the text to show
     * @param unit      the unit to show
     * @param position  the needle's position, in the units of the gauge
     */
    void gaugeTLValueDualNotify(const QString &value, const QString &unit, unsigned char position);
    /**
     * The top right gauge.
     * @param value     the text to show
     * @param position  the needle's position, in the units of the gauge
     */
    void gaugeTRValueNotify(const QString &value, unsigned char position);
    /**
     * The top right gauge, with value and unit apart.
     * @param value     the text to show
     * @param unit      the unit to show
     * @param position  the needle's position, in the units of the gauge
     */
    void gaugeTRValueDualNotify(const QString &value, const QString &unit, unsigned char position);
    /**
     * The bottom left gauge.
     * @param value     the text to show
     * @param position  the needle's position, in the units of the gauge
     */
    void gaugeBLValueNotify(const QString &value, unsigned char position);
    /**
     * The bottom left gauge, with value and unit apart.
     * @param value     the text to show
     * @param unit      the unit to show
     * @param position  the needle's position, in the units of the gauge
     */
    void gaugeBLValueDualNotify(const QString &value, const QString &unit, unsigned char position);
    /**
     * The bottom right gauge.
     * @param value     the text to show
     * @param position  the needle's position, in the units of the gauge
     */
    void gaugeBRValueNotify(const QString &value, unsigned char position);
    /**
     * The bottom right gauge, with value and unit apart.
     * @param value     the text to show
     * @param unit      the unit to show
     * @param position  the needle's position, in the units of the gauge
     */
    void gaugeBRValueDualNotify(const QString &value, const QString &unit, unsigned char position);
    /** Peak indicator. @param shown  0 hidden, any other value shown */
    void peakIndicatorNotify(unsigned char shown);
    /** Text of the peak indicator. @param text  six characters of it are shown */
    void peakIndicatorTextNotify(const QString &text);
    /** Top-bar text of the gauges screen. @param text  the text to show */
    void gauTopBarTextNotify(const QString &text);
    /**
     * Appearance of the gauges.
     * @param styles         by gauge, with 1 for a needle and any other value for an arc: 0 centre,
     *                       1 top left, 2 top right, 3 bottom left, 4 bottom right
     * @param zeroPositions  by gauge, from 0 to 255: 0 centre, 1 top left, 2 top right, 3 bottom
     *                       left, 4 bottom right
     */
    void gaugeGraphicalSettingNotify(const QByteArray &styles, const QByteArray &zeroPositions);
    /** Shift lamp. @param on  0 off, any other value on */
    void shifterArrowIndicatorNotify(unsigned char on);
    /**
     * Colour of the peak indicator.
     * @param color  1 red, 2 blue, 3 orange, 4 yellow, 5 green, any other value default
     */
    void centerGaugePeakColorNotify(unsigned char color);
    /**
     * The custom keys of the gauges screen.
     * @param captions  by key: 0 first key, 1 second key
     * @param states    per key 0 for disabled, 1 for enabled, 2 for enabled and checked
     */
    void gauCustomControlLabelsNotify(const QStringList &captions, const QByteArray &states);
    /**
     * A list of the module on the gauges screen.
     * @param title   its title
     * @param types   a byte per row, not decoded by the screens
     * @param rows    the texts of the rows
     * @param values  the values of the rows
     * @param states  a byte per row, not decoded by the screens
     */
    void listInfoNotify(const QString &title, const QByteArray &types, const QStringList &rows,
                        const QList<QVariant> &values, const QByteArray &states);
    /** The active preset. @param preset  its number */
    void activePresetStatusNotify(unsigned char preset);
    /**
     * The red line of the centre gauge.
     * @param position  where it begins, in hundreds of revolutions per minute
     */
    void centerGaugeRedLinePositionNotify(unsigned char position);
    /**
     * What the module shows on the gauges screen.
     * @param type  0 the page itself, 1 a list, 2 a popup, 16 a list, 17 a list, 18 a list
     */
    void guiDisplayTypeNotify(unsigned char type);
    /**
     * Combined vehicle data, read by the gauges and the vehicle screen.
     * @param properties  ten integers: 0 door bits, 1 battery volts, 2 transmission temperature,
     *                    3 coolant temperature, 4 intake temperature, 5 engine load in percent,
     *                    6 front left tire temperature, 7 front right tire temperature, 8 rear
     * right tire temperature, 9 rear left tire temperature
     */
    void Properties2TextInfo(QList<int> properties);

    // Vehicle information

    /**
     * A popup of the module on the vehicle screen.
     * @param title   its title
     * @param texts   its texts
     * @param values  the values beside them
     * @param bytes   its style, not decoded by the screens
     */
    void vehPopUpNotify(const QString &title, const QStringList &texts, const QStringList &values,
                        const QByteArray &bytes);
    /**
     * Open doors.
     * @param bits  bit 0 hood, bit 1 trunk, bit 2 front left, bit 3 front right, bit 4 rear left,
     *              bit 5 rear right
     */
    void doorStatus(unsigned char bits);
    /** Battery voltage. @param text  five characters of it are shown */
    void batteryVoltage(const QString &text);
    /** Compass heading. @param text  the heading as text */
    void compassHeading(const QString &text);
    /**
     * Tire pressures.
     * @param flags   bit 0 front left warns, bit 1 front right warns, bit 2 rear left warns, bit 3
     *                rear right warns, bit 5 texts are valid
     * @param aux     not used
     * @param values  texts: 0 front left, 1 front right, 2 rear right, 3 rear left, 4 check engine
     */
    void tirePressureStatus(unsigned char flags, unsigned char aux, const QStringList &values);
    /**
     * Tire temperatures.
     * @param flags   bit 0 front left warns, bit 1 front right warns, bit 2 rear left warns, bit 3
     *                rear right warns, bit 5 texts are valid
     * @param aux     not used
     * @param values  texts: 0 front left, 1 front right, 2 rear left, 3 rear right
     */
    void tireTemperatureStatus(unsigned char flags, unsigned char aux, const QStringList &values);
    /** Seat belts. @param state  the module's code */
    void seatbeltStatus(unsigned char state);
    /** Check engine. @param state  0 disabled, 1 normal, 2 warning */
    void checkEngineStatus(unsigned char state);
    /** Gear position. @param gear  the module's code */
    void checkGearPositionStatus(unsigned char gear);
    /**
     * Two lines of free text; two empty ones give the place back to the top-bar text.
     * @param line1  the first line
     * @param line2  the second line
     */
    void vehicleInfoText(const QString &line1, const QString &line2);
    /** Top-bar text of the vehicle screen. @param text  the text to show */
    void vehTopBarText(const QString &text);
    /**
     * The custom keys of the vehicle screen.
     * @param captions  by key: 0 first key, 1 second key
     * @param states    per key 0 for disabled, 1 for enabled, 2 for enabled and checked
     */
    void vehCustomeCtrlLabels(const QStringList &captions, const QByteArray &states);
    /**
     * A list of the module on the vehicle screen.
     * @param title   its title
     * @param types   a byte per row, not decoded by the screens
     * @param rows    the texts of the rows
     * @param values  the values of the rows
     * @param states  a byte per row, not decoded by the screens
     */
    void vehListInfo(const QString &title, const QByteArray &types, const QStringList &rows,
                     const QList<QVariant> &values, const QByteArray &states);
    /**
     * What the module shows on the vehicle screen.
     * @param type  0 the page itself, 1 a list, 2 a popup, 16 a list, 17 a list, 18 a list
     */
    void vehGuiDisplayType(unsigned char type);

    // Parking assist

    /**
     * A popup of the module on the parking screen.
     * @param title   its title
     * @param texts   its texts
     * @param values  the values beside them
     * @param bytes   its style, not decoded by the screens
     */
    void parkPopUpNotify(const QString &title, const QStringList &texts, const QStringList &values,
                         const QByteArray &bytes);
    /** Top-bar text of the parking screen. @param text  fifty characters of it are shown */
    void parkingTopBarText(const QString &text);
    /**
     * Distances in front of the car.
     * @param distances  raw, from 0 to 255: 0 left, 1 left middle, 2 right middle, 3 right
     */
    void parkingDistanceFront(const QByteArray &distances);
    /** Distances along the left side. @param distances  raw, from 0 to 255 */
    void parkingDistanceLeft(const QByteArray &distances);
    /** Distances along the right side. @param distances  raw, from 0 to 255 */
    void parkingDistanceRight(const QByteArray &distances);
    /**
     * Obstacle in one zone, behind the car or in front of it.
     * @param zoneAndLevel  two bytes: 0 zone code from 0 to 10, 1 level from 0 to 4
     */
    void parkingDistanceRear(const QByteArray &zoneAndLevel);
    /**
     * The custom keys of the parking screen.
     * @param captions  by key: 0 first key, 1 second key
     * @param states    per key 0 for disabled, 1 for enabled, 2 for enabled and checked
     */
    void parkCustomControlLabels(const QStringList &captions, const QByteArray &states);
    /**
     * A list of the module on the parking screen.
     * @param title   its title
     * @param types   a byte per row, not decoded by the screens
     * @param rows    the texts of the rows
     * @param values  the values of the rows
     * @param states  a byte per row, not decoded by the screens
     */
    void parkListInfo(const QString &title, const QByteArray &types, const QStringList &rows,
                      const QList<QVariant> &values, const QByteArray &states);
    /**
     * What the module shows on the parking screen.
     * @param type  0 the page itself, 1 a list, 2 a popup, 16 a list, 17 a list, 18 a list
     */
    void parkGuiDisplayType(unsigned char type);

    // Climate

    /**
     * The whole climate state of both zones.
     * @param status  by position: 0 system, 1 automatic and dual, 2 fan, 3 vent mode, 4 A/C, 5 rear
     *                defroster and wheel heating, 6 left temperature, 7 right temperature, 8 fresh
     *                air, 9 left seat, 10 right seat, 11 max A/C, 12 front defroster, 13 unused,
     *                14 manual left seat, 15 manual right seat, 16 manual A/C, 17 manual fan,
     *                18 manual temperature, 19 manual system, 20 manual vent mode, 21 unused,
     *                22 manual max A/C
     */
    void NordaClimateCtrlStatusNotify(const QList<int> &status);
    /** The front zone's kind of climate control changed. */
    void climateType();
    /** The second zone's kind of climate control changed. */
    void secondclimateType();

    // The module's menu and its About data

    /**
     * One line of the configuration menu.
     * @param info   integers: 0 line type (1 for a title and 2 or 3 for an item), 1 unused, 2 line
     *               number
     * @param label  texts, joined without a separator
     * @param value  texts, joined without a separator
     */
    void NordaConfigMenuTextInfo(const QList<int> &info, const QStringList &label,
                                 const QStringList &value);
    /**
     * Firmware version of the module.
     * @param version  texts: 0 not shown, 1 first part, 2 second part, 3 third part
     */
    void NordaVerInfo(const QStringList &version);
    /** The module's clock. @param digits  twelve digits as single entries */
    void TimeInfo(const QStringList &digits);

private:
    VtqAdaptor();
};

} // namespace norda
