#pragma once

#include "climatestatus.h"

#include <QList>
#include <QMap>
#include <QString>

#include <optional>

namespace norda {

/** The bit of the module's key map that stands for a touch. */
struct CommandBit
{
    int byte; ///< 4 to 10
    int value;
};

/** The seven command bytes, 4 to 10. */
class CommandBytes
{
public:
    static constexpr int First = 4;
    static constexpr int Last = 10;

    CommandBytes();

    /** Sets every bit to 0: at the start of each touch, so that nothing of the last one stays. */
    void clear();
    void set(CommandBit bit);
    /** Byte number to value, as the module wants it. */
    const QMap<int, int> &map() const { return m_NordaAllSendByteInfo; }

private:
    QMap<int, int> m_NordaAllSendByteInfo;
};

/** The digits of all elements, one after the other. */
QString ListIntToString(const QList<int> &list);

/** The four groups of climate keys; a key is known by its group and its id in it. */
enum class ClimateGroup { ManualText, ManualIcon, AutoDualText, AutoDualIcon };

/** A seat key, which steps its level up until the end and then down again. */
enum class SeatKey { LeftHeat, RightHeat, LeftCool, RightCool };
constexpr int seatKeyCount = 4;

/** The bit of a key that has one of its own; none for seat keys, the vent key and unknown ids. */
std::optional<CommandBit> commandBit(ClimateGroup group, int id);
/** The seat key of an id in an icon group. */
std::optional<SeatKey> seatKey(ClimateGroup group, int id);
/** The bit by which a seat key steps up. */
CommandBit seatUpBit(ClimateGroup group, SeatKey key);
/** The bit by which a seat key steps down. */
CommandBit seatDownBit(ClimateGroup group, SeatKey key);
/** Where the status list reports the seat of a key. */
NordaClimateVaule seatPosition(ClimateGroup group, SeatKey key);
/** The bit that selects a vent mode, 0 to 3. */
CommandBit ventCommandBit(int index);
/** Whether a key is the auto/dual vent key, which selects the mode after the present one. */
bool isVentKey(ClimateGroup group, int id);
/** The module-defined key, 0 or 1, of an id in a text group; none for any other key. */
std::optional<int> customKey(ClimateGroup group, int id);

/** The bits of the zone key. */
constexpr CommandBit toSecondZoneBit = {8, 64};
constexpr CommandBit toFrontZoneBit = {8, 128};

/**
 * Which way a seat key steps next.
 * @param up     the way it went so far
 * @param value  the seat's last reported value
 */
bool seatStepsUp(ClimateGroup group, SeatKey key, bool up, int value);

} // namespace norda
