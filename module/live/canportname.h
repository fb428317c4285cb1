#pragma once

#include <QString>

#include <optional>

namespace module {

/** A CAN bus: which plugin of Qt reaches it, and under which name. */
struct CanPort
{
    QString plugin;
    QString interface;
    int bitrate = 0; ///< 0 for what the interface is set to
};

/** Reads "PLUGIN:INTERFACE[?bitrate=N]"; nothing for any other form. */
std::optional<CanPort> canPortOf(const QString &name);

} // namespace module
