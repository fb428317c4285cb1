#include "commandbytes.h"

#include <iterator>

namespace norda {

static constexpr CommandBit none = {0, 0};

// By id in the group. Seat keys and the vent key have several bits and stand below.
// clang-format off
static constexpr CommandBit manualText[] = {
    {9, 128}, // key_AC_2
    {9,  64}, // key_max_AC_2
    none,     // key_P1_2
    none,     // key_P2_2
};
static constexpr CommandBit manualIcon[] = {
    { 8,  1}, // key_temp_prev
    { 8,  4}, // key_air_speed_prev_2
    { 8,  2}, // key_temp_next
    { 8,  8}, // key_air_speed_next_2
    none, none, none, none, // seats
    {10, 16}, // key_seat_2
    none,     // key_circulation_2
    none,     // key_Steering_wheel_heat_2
    { 8, 32}, // key_power_2
    none,     // key_wind_direction_2
    none,     // key_demisting_2
};
static constexpr CommandBit autoDualText[] = {
    {4, 64}, // key_auto
    {7,  1}, // key_dual
    {5, 16}, // key_AC
    {5,  8}, // key_max_AC
    none,    // key_P1
    none,    // key_P2
};
static constexpr CommandBit autoDualIcon[] = {
    {4,   2}, // key_left_temp_next
    {5, 128}, // key_right_temp_next
    {4,   1}, // key_left_temp_prev
    {5,  64}, // key_right_temp_prev
    {4,  16}, // key_air_speed_prev
    {4,  32}, // key_air_speed_next
    none,     // key_seat
    {5,  32}, // key_circulation
    {7,   8}, // key_Steering_wheel_heat
    {4, 128}, // key_power
    none, none, none, none, // seats
    {5,   2}, // key_wind_direction
    {5,   4}, // key_demisting
};

/** The two bits of a seat key, and the reported values at which it turns around. */
struct SeatRow
{
    CommandBit up, down;
    int turnsDownAt, turnsUpAt;
};

// By seat key.
static constexpr SeatRow autoDualSeats[seatKeyCount] = {
    {{6,  2}, {6,   8},  3,  0},
    {{6,  1}, {6,   4},  3,  0},
    {{7, 64}, {7, 128}, 19, 16},
    {{7, 16}, {7,  32}, 19, 16},
};
// The manual layout's cooled seats turn up again at off only, not at cooling level 0.
static constexpr SeatRow manualSeats[seatKeyCount] = {
    {{ 9, 32}, { 9,  16},  3, 0},
    {{ 9,  8}, { 9,   4},  3, 0},
    {{ 9,  1}, { 9,   2}, 19, 0},
    {{10, 64}, {10, 128}, 19, 0},
};

// By vent index.
static constexpr CommandBit vents[] = {{6, 16}, {6, 64}, {6, 32}, {6, 128}};
// clang-format on

static constexpr int firstManualSeat = 4;
static constexpr int firstAutoDualSeat = 10;
static constexpr int firstManualCustom = 2;
static constexpr int firstAutoDualCustom = 4;
static constexpr int ventKeyId = 6;

static const SeatRow &seatRow(ClimateGroup group, SeatKey key)
{
    return (group == ClimateGroup::ManualIcon ? manualSeats : autoDualSeats)[int(key)];
}

CommandBytes::CommandBytes()
{
    clear();
}

void CommandBytes::clear()
{
    for (int byte = First; byte <= Last; ++byte)
        m_NordaAllSendByteInfo.insert(byte, 0);
}

void CommandBytes::set(CommandBit bit)
{
    m_NordaAllSendByteInfo[bit.byte] |= bit.value;
}

QString ListIntToString(const QList<int> &list)
{
    QString digits;
    for (const int element : list)
        digits += QString::number(element);
    return digits;
}

template <size_t Count>
static std::optional<CommandBit> bitOf(const CommandBit (&bits)[Count], int id)
{
    if (id < 0 || id >= int(Count) || bits[id].byte == none.byte)
        return std::nullopt;
    return bits[id];
}

std::optional<CommandBit> commandBit(ClimateGroup group, int id)
{
    switch (group) {
    case ClimateGroup::ManualText:
        return bitOf(manualText, id);
    case ClimateGroup::ManualIcon:
        return bitOf(manualIcon, id);
    case ClimateGroup::AutoDualText:
        return bitOf(autoDualText, id);
    case ClimateGroup::AutoDualIcon:
        return bitOf(autoDualIcon, id);
    }
    return std::nullopt;
}

std::optional<SeatKey> seatKey(ClimateGroup group, int id)
{
    const bool hasSeats = group == ClimateGroup::ManualIcon || group == ClimateGroup::AutoDualIcon;
    const int key = id - (group == ClimateGroup::ManualIcon ? firstManualSeat : firstAutoDualSeat);
    if (!hasSeats || id < 0 || key < 0 || key >= seatKeyCount)
        return std::nullopt;
    return SeatKey(key);
}

CommandBit seatUpBit(ClimateGroup group, SeatKey key)
{
    return seatRow(group, key).up;
}

CommandBit seatDownBit(ClimateGroup group, SeatKey key)
{
    return seatRow(group, key).down;
}

NordaClimateVaule seatPosition(ClimateGroup group, SeatKey key)
{
    using Value = NordaClimateVaule;
    const bool isRight = key == SeatKey::RightHeat || key == SeatKey::RightCool;
    if (group == ClimateGroup::ManualIcon)
        return isRight ? Value::ManualRightSeat : Value::ManualLeftSeat;
    return isRight ? Value::RightSeat : Value::LeftSeat;
}

bool isVentKey(ClimateGroup group, int id)
{
    return group == ClimateGroup::AutoDualIcon && id == ventKeyId;
}

std::optional<int> customKey(ClimateGroup group, int id)
{
    const bool isText = group == ClimateGroup::ManualText || group == ClimateGroup::AutoDualText;
    const int first = group == ClimateGroup::ManualText ? firstManualCustom : firstAutoDualCustom;
    if (!isText || (id != first && id != first + 1))
        return std::nullopt;
    return id - first;
}

CommandBit ventCommandBit(int index)
{
    return vents[index];
}

bool seatStepsUp(ClimateGroup group, SeatKey key, bool up, int value)
{
    const SeatRow &row = seatRow(group, key);
    if (value == row.turnsDownAt)
        return false;
    return value == row.turnsUpAt || up;
}

} // namespace norda
