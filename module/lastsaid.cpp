#include "lastsaid.h"

namespace module {

/** A zone's message speaks for all zones; the others change the text beside them at most. */
static int partOfParking(const QVariantList &arguments)
{
    enum Part { Zones = 0, BlindSpots = 1, Nothing = 2 };
    static constexpr int zones = 8, codes = 11, levels = 5;
    const QByteArray message = arguments.value(0).toByteArray();
    if (message.size() < 2 || uchar(message[0]) >= codes || uchar(message[1]) >= levels)
        return Nothing;
    return message[0] >= 1 && message[0] <= zones ? Zones : BlindSpots;
}

/** A menu comes line by line; its title begins a page. */
static int partOfMenu(const QVariantList &arguments)
{
    enum LineType { TitleLine = 1 };
    static constexpr int mostLines = 16;
    const auto info = arguments.value(0).value<QList<int>>();
    return info.value(0) == TitleLine ? 0 : 1 + qBound(0, info.value(2), mostLines + 1);
}

static constexpr struct
{
    const char *signal;
    int (*part)(const QVariantList &arguments);
} signalsInParts[] = {
    {"parkingDistanceRear", partOfParking},
    {"NordaConfigMenuTextInfo", partOfMenu},
};

int partTold(const QByteArray &signal, const QVariantList &arguments)
{
    for (const auto &row : signalsInParts) {
        if (signal == row.signal)
            return row.part(arguments);
    }
    return 0;
}

} // namespace module
