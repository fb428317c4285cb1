#include "climatestatus.h"

#include <iterator>

namespace norda {

// clang-format off
struct ButtonRow { int code; ButtonLook look; };
static constexpr ButtonRow buttonRows[] = {
    {0, {true,  false, true}},
    {1, {true,  true,  true}},
    {3, {true,  false, true}},
    {9, {false, false, true}},
};
static constexpr ButtonLook hiddenButton = {false, false, false};

struct VentModeRow { int value, index, position; };
static constexpr VentModeRow ventModes[] = {
    {4, 0, 2},
    {2, 1, 1},
    {3, 2, 3},
    {1, 3, 5},
};

struct VentRow { int position, row; };
static constexpr VentRow ventRows[] = {
    {0, 0}, {1, 2}, {2, 1}, {3, 3}, {4, 7}, {5, 4}, {7, 6},
};

struct AutoDualRow { int value; AutoDual state; };
static constexpr AutoDualRow autoDualRows[] = {
    {0, {false, false}},
    {1, {true,  false}},
    {2, {false, true}},
    {3, {true,  true}},
};

static const Level_Path ventTable[][2] = {
    {{0, ":/icon/airicon/seat_n.png"},                {0, ":/icon/airicon/seat_p.png"}},
    {{1, ":/icon/airicon/seat_head_n.png"},           {1, ":/icon/airicon/seat_head_p.png"}},
    {{2, ":/icon/airicon/seat_foot_n.png"},           {2, ":/icon/airicon/seat_foot_p.png"}},
    {{3, ":/icon/airicon/seat_foot_head_n.png"},      {3, ":/icon/airicon/seat_foot_head_p.png"}},
    {{4, ":/icon/airicon/seat_foot_windshied_n.png"}, {4, ":/icon/airicon/seat_foot_windshied_p.png"}},
};
static const Level_Path recirculationTable[][2] = {
    {{0, ":/icon/airicon/circulation_n.png"}, {0, ":/icon/airicon/circulation_p.png"}},
    // The blanks belong to the names.
    {{1, ":/icon/airicon/external_circulation _n.png"}, {1, ":/icon/airicon/external_circulation _p.png"}},
};
// clang-format on

template <typename Row, size_t Count, typename Key>
static const Row *findRow(const Row (&rows)[Count], int Row::*field, Key key)
{
    for (const Row &row : rows) {
        if (row.*field == key)
            return &row;
    }
    return nullptr;
}

ClimateStatusMap climateStatusMap(const QList<int> &status)
{
    ClimateStatusMap map;
    for (int position = 0; position < status.size(); ++position)
        map.insert(NordaClimateVaule(position), status[position]);
    return map;
}

ButtonLook buttonLook(int code)
{
    const ButtonRow *row = findRow(buttonRows, &ButtonRow::code, code);
    return row ? row->look : hiddenButton;
}

VentMode ventMode(int statusValue)
{
    const VentModeRow *row = findRow(ventModes, &VentModeRow::value, statusValue);
    return row ? VentMode{row->index, row->position} : VentMode{std::nullopt, 0};
}

std::optional<int> ventRow(int positionCode)
{
    const VentRow *row = findRow(ventRows, &VentRow::position, positionCode);
    return row ? std::optional<int>(row->row) : std::nullopt;
}

const Level_Path *ventImages(int row)
{
    return row >= 0 && row < int(std::size(ventTable)) ? ventTable[row] : nullptr;
}

const Level_Path *recirculationImages(int state)
{
    return state >= 0 && state < int(std::size(recirculationTable)) ? recirculationTable[state]
                                                                    : nullptr;
}

SeatState seatState(int code)
{
    static constexpr int highestHeating = 3;
    return {code > highestHeating, code % seatLevelCount};
}

QString seatHeatImage(int level)
{
    return QStringLiteral(":/icon/airicon/seat_heat_%1.png").arg(level);
}

QString seatCoolImage(int level)
{
    return QStringLiteral(":/icon/airicon/seat_AC_%1.png").arg(level);
}

int fanLevel(int speed)
{
    static constexpr int step = 36;
    static constexpr int highest = 7;
    if (speed <= 0)
        return 0;
    return speed > (highest - 1) * step ? highest : (speed - 1) / step + 1;
}

QString fanImage(int level)
{
    return QStringLiteral(":/icon/airicon/position_%1.png").arg(level);
}

QString plainTemperatureText(int fahrenheit)
{
    return QString::number(double(fahrenheit), 'f', 2) + QStringLiteral(" F");
}

QString temperatureText(int fahrenheit)
{
    static constexpr int low = 50;
    static constexpr int high = 95;
    if (fahrenheit == low)
        return QStringLiteral("LO");
    return fahrenheit == high ? QStringLiteral("HI") : plainTemperatureText(fahrenheit);
}

int temperatureMarkerX(int value, int trackWidth, int markerWidth)
{
    static constexpr int minimum = 59;
    static constexpr int maximum = 91;
    const int travel = trackWidth - markerWidth;
    const int remainder = value % minimum;
    if (remainder < 1)
        return 0;
    if (remainder >= maximum % minimum)
        return travel;
    return remainder * (travel / (maximum - minimum + 1));
}

std::optional<AutoDual> autoDual(int value)
{
    const AutoDualRow *row = findRow(autoDualRows, &AutoDualRow::value, value);
    return row ? std::optional<AutoDual>(row->state) : std::nullopt;
}

// A position that the list did not hold reads as 0.
AutoDualStatus autoDualStatus(const ClimateStatusMap &status)
{
    static constexpr int rearDefrosterBit = 0x01;
    static constexpr int heatedWheelBit = 0x02;
    using Value = NordaClimateVaule;

    const int heating = status.value(Value::HeatingBits);
    AutoDualStatus read = {};
    read.modes = autoDual(status.value(Value::AutoDual));
    read.ventMode = status.value(Value::VentMode);
    read.frontDefroster = status.value(Value::FrontDefroster);
    read.rearDefroster = (heating & rearDefrosterBit) != 0;
    read.heatedWheel = (heating & heatedWheelBit) != 0;
    read.system = status.value(Value::System);
    read.airConditioning = status.value(Value::AirConditioning);
    read.maxAirConditioning = status.value(Value::MaxAirConditioning);
    read.recirculation = status.value(Value::AirSource) == 0;
    read.leftTemperature = status.value(Value::LeftTemperature);
    read.rightTemperature = status.value(Value::RightTemperature);
    read.fan = status.value(Value::Fan);
    read.leftSeat = status.value(Value::LeftSeat);
    read.rightSeat = status.value(Value::RightSeat);
    return read;
}

ManualStatus manualStatus(const ClimateStatusMap &status)
{
    using Value = NordaClimateVaule;
    ManualStatus read = {};
    read.system = status.value(Value::ManualSystem);
    read.airConditioning = status.value(Value::ManualAirConditioning);
    read.maxAirConditioning = status.value(Value::ManualMaxAirConditioning);
    read.fan = status.value(Value::ManualFan);
    read.temperature = status.value(Value::ManualTemperature);
    read.ventMode = status.value(Value::ManualVentMode);
    read.leftSeat = status.value(Value::ManualLeftSeat);
    read.rightSeat = status.value(Value::ManualRightSeat);
    return read;
}

} // namespace norda
