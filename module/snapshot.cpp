#include "snapshot.h"

#include "wire.h"

namespace module {

/** A message about a zone replaces the state of all zones; the others change the text at most. */
static int partOfParking(const QVariantList &arguments)
{
    enum Part { Zones = 0, BlindSpots = 1, Nothing = 2 };
    const QByteArray message = arguments.value(0).toByteArray();
    if (message.size() < 2 || uchar(message[0]) > wire::LastParkingCode ||
        uchar(message[1]) > wire::LastParkingLevel)
        return Nothing;
    return message[0] >= wire::FirstZone && message[0] <= wire::LastZone ? Zones : BlindSpots;
}

/** A menu comes line by line; a title begins a page. */
static int partOfMenu(const QVariantList &arguments)
{
    static constexpr int mostLines = 16;
    const auto info = arguments.value(0).value<QList<int>>();
    return info.value(0) == wire::TitleLine ? 0 : 1 + qBound(0, info.value(2), mostLines + 1);
}

static constexpr struct
{
    const char *signal;
    int (*part)(const QVariantList &arguments);
} signalsInParts[] = {
    {"parkingDistanceRear", partOfParking},
    {"NordaConfigMenuTextInfo", partOfMenu},
};

int statePart(const QByteArray &signal, const QVariantList &arguments)
{
    for (const auto &row : signalsInParts) {
        if (signal == row.signal)
            return row.part(arguments);
    }
    return 0;
}

} // namespace module
