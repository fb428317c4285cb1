#pragma once

#include <QList>
#include <QMap>
#include <QString>

#include <optional>

namespace norda {

/** Positions of the climate status list. Longer lists are kept too, so any integer is a position.
 */
enum class NordaClimateVaule : int {
    System = 0,
    AutoDual = 1,
    Fan = 2,
    VentMode = 3,
    AirConditioning = 4,
    HeatingBits = 5,
    LeftTemperature = 6,
    RightTemperature = 7,
    AirSource = 8,
    LeftSeat = 9,
    RightSeat = 10,
    MaxAirConditioning = 11,
    FrontDefroster = 12,
    Unused13 = 13,
    ManualLeftSeat = 14,
    ManualRightSeat = 15,
    ManualAirConditioning = 16,
    ManualFan = 17,
    ManualTemperature = 18,
    ManualSystem = 19,
    ManualVentMode = 20,
    Unused21 = 21,
    ManualMaxAirConditioning = 22,
};

/** Kinds of climate control; the key of a map that the screen keeps for hosts. */
enum class NordaHVACMode : int { Off, Manual, Auto, Dual };

/** An image for a level; tables hold them in pairs, the normal one before the pressed one. */
struct Level_Path
{
    int level;
    QString path;
};

using ClimateStatusMap = QMap<NordaClimateVaule, int>;

/** The status list by position. */
ClimateStatusMap climateStatusMap(const QList<int> &status);

/** How a button stands for a state code. */
struct ButtonLook
{
    bool enabled;
    bool checked;
    bool visible;
};

/** 0 and 3 off, 1 on, 9 greyed out, any other code hidden. */
ButtonLook buttonLook(int code);

/** A vent mode as the status list reports it. */
struct VentMode
{
    std::optional<int> index; ///< 0 to 3; none keeps the previous one
    int position;             ///< the code for `ventRow()`
};

VentMode ventMode(int statusValue);
constexpr int ventModeCount = 4;

/** Row of the vent table for a position code; none keeps the previous row. */
std::optional<int> ventRow(int positionCode);
/** Images of a row of the vent table, normal and pressed; null for a row that it does not hold. */
const Level_Path *ventImages(int row);
/** Images of a recirculation state, 0 or 1; null for any other. */
const Level_Path *recirculationImages(int state);

/** A seat's heating or cooling. */
struct SeatState
{
    bool cooled;
    int level; ///< 0 to 3; below 0 for a code that names none
};

constexpr int seatLevelCount = 4;
SeatState seatState(int code);
QString seatHeatImage(int level);
QString seatCoolImage(int level);

/** Level 0 to 7 of the fan meter for a reported fan speed. */
int fanLevel(int speed);
QString fanImage(int level);

/** A set temperature as text: "LO" for 50, "HI" for 95, two decimals and " F" for any other. */
QString temperatureText(int fahrenheit);
/** The same without "LO" and "HI". */
QString plainTemperatureText(int fahrenheit);

/**
 * Where the temperature marker stands on its track.
 * @param value        degrees Fahrenheit; the remainder by 59 decides, as the module's bar does
 * @param trackWidth   width of the track
 * @param markerWidth  width of the marker
 */
int temperatureMarkerX(int value, int trackWidth, int markerWidth);

/** Whether auto and dual are on, from the status list's one element for both. */
struct AutoDual
{
    bool automatic;
    bool dual;
};

/** None for a value that changes neither. */
std::optional<AutoDual> autoDual(int value);

/** What the auto/dual layout reads from the status list; keys as codes for `buttonLook()`. */
struct AutoDualStatus
{
    std::optional<AutoDual> modes;
    int ventMode;
    int frontDefroster;
    int rearDefroster;
    int heatedWheel;
    int system;
    int airConditioning;
    int maxAirConditioning;
    int recirculation;
    int leftTemperature;
    int rightTemperature;
    int fan;
    int leftSeat;
    int rightSeat;
};

AutoDualStatus autoDualStatus(const ClimateStatusMap &status);

/** What the manual layout reads from the status list; keys as codes for `buttonLook()`. */
struct ManualStatus
{
    int system;
    int airConditioning;
    int maxAirConditioning;
    int fan;
    int temperature;
    int ventMode;
    int leftSeat;
    int rightSeat;
};

ManualStatus manualStatus(const ClimateStatusMap &status);

} // namespace norda
