#pragma once

#include <QtGlobal>

namespace module {

/** How long a value may stay away that usually comes once in a period; longer, it is missing. */
constexpr qint64 longestSilenceMs(qint64 periodMs)
{
    constexpr qint64 leastMs = 1000;
    constexpr int periods = 5;
    return periods * periodMs > leastMs ? periods * periodMs : leastMs;
}

} // namespace module
