#include "parkingzones.h"

#include <QStringList>
#include <QVector>

namespace norda {

struct DistanceBand
{
    unsigned char upTo;
    int level;
};

// clang-format off
static constexpr DistanceBand distanceBands[] = {
    {  0, 0},
    { 64, 1},
    {128, 2},
    {192, 3},
    {255, 4},
};

struct StartImage
{
    const char *pattern;
    int number;
};

// At the start the car's sides are swapped against the distance images, and one number differs.
static constexpr StartImage startImages[] = {
    {":/icon/radaricon/F_D_%1.png",   0},
    {":/icon/radaricon/F_D_M_%1.png", 1},
    {":/icon/radaricon/F_U_M_%1.png", 0},
    {":/icon/radaricon/F_U_%1.png",   0},
    {":/icon/radaricon/R_D_%1.png",   0},
    {":/icon/radaricon/R_D_M_%1.png", 0},
    {":/icon/radaricon/R_U_M_%1.png", 0},
    {":/icon/radaricon/R_U_%1.png",   0},
};
// clang-format on
static_assert(std::size(startImages) == ParkingZoneCount);

static QVector<QStringList> zoneImages(const QStringList &names)
{
    QVector<QStringList> rows;
    for (const QString &name : names) {
        QStringList images;
        for (int level = 0; level < parkingLevelCount; ++level)
            images.append(QStringLiteral(":/icon/radaricon/") + name + QLatin1Char('_') +
                          QString::number(level) + QStringLiteral(".png"));
        rows.append(images);
    }
    return rows;
}

// U is the car's left side, at the top of the picture, and D its right one.
static const QVector<QStringList> frontImages = zoneImages({"F_U", "F_U_M", "F_D_M", "F_D"});
static const QVector<QStringList> rearImages = zoneImages({"R_U", "R_U_M", "R_D_M", "R_D"});

int distanceLevel8Set(unsigned char distance)
{
    for (const DistanceBand &band : distanceBands) {
        if (distance <= band.upTo)
            return band.level;
    }
    Q_UNREACHABLE();
}

const QString &zoneImage(ParkingZone zone, int level)
{
    const QVector<QStringList> &images = zone < zonesPerEnd ? frontImages : rearImages;
    return images.at(zone % zonesPerEnd).at(level);
}

QString zoneStartImage(ParkingZone zone)
{
    const StartImage &image = startImages[zone];
    return QString::fromLatin1(image.pattern).arg(image.number, 2, 10, QLatin1Char('0'));
}

std::optional<std::array<int, zonesPerEnd>> parseDistances(const QByteArray &bytes)
{
    if (bytes.size() < zonesPerEnd)
        return std::nullopt;
    std::array<int, zonesPerEnd> levels = {};
    for (int i = 0; i < zonesPerEnd; ++i)
        levels[size_t(i)] = distanceLevel8Set(static_cast<unsigned char>(bytes[i]));
    return levels;
}

std::optional<ParkingMessage> parseParkingMessage(const QByteArray &bytes)
{
    enum : unsigned char { ClearCode = 0, LastZone = 8, LeftCode = 9, RightCode = 10 };
    if (bytes.size() < parkingMessageSize)
        return std::nullopt;
    const auto code = static_cast<unsigned char>(bytes[0]);
    const auto level = static_cast<unsigned char>(bytes[1]);
    if (code > RightCode || level >= parkingLevelCount)
        return std::nullopt;
    if (code == ClearCode)
        return ParkingMessage{ParkingMessage::Clear, {}, level};
    if (code <= LastZone)
        return ParkingMessage{ParkingMessage::Zone, ParkingZone(code - 1), level};
    const auto side =
        code == LeftCode ? ParkingMessage::LeftBlindSpot : ParkingMessage::RightBlindSpot;
    return ParkingMessage{side, {}, level};
}

} // namespace norda
