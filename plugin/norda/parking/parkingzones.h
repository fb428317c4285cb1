#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <optional>

namespace norda {

/** The sensor zones around the car, the left side of each end first. */
enum ParkingZone {
    FrontLeft,
    FrontLeftMid,
    FrontRightMid,
    FrontRight,
    RearLeft,
    RearLeftMid,
    RearRightMid,
    RearRight,
    ParkingZoneCount
};

constexpr int parkingLevelCount = 5;
constexpr int zonesPerEnd = 4;
constexpr int parkingMessageSize = 2;

/** A raw distance byte as a level: 0 for 0, then 1 to 4. */
int distanceLevel8Set(unsigned char distance);

/** The image of a zone at a level from 0 to 4. */
const QString &zoneImage(ParkingZone zone, int level);
/** The image of a zone before the first report. */
QString zoneStartImage(ParkingZone zone);

/** The levels of the four zones of one end; nothing for fewer than four bytes. */
std::optional<std::array<int, zonesPerEnd>> parseDistances(const QByteArray &bytes);

/** What a two-byte parking message says. */
struct ParkingMessage
{
    enum Kind { Clear, Zone, LeftBlindSpot, RightBlindSpot };
    Kind kind;
    ParkingZone zone; ///< only of a zone message
    int level;        ///< 0 to 4
};
/** Nothing for a message that is too short, or whose code or level does not exist. */
std::optional<ParkingMessage> parseParkingMessage(const QByteArray &bytes);

} // namespace norda
