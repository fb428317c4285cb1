#pragma once

#include "carfiles.h"
#include "live/livesettings.h"
#include "vehiclesource.h"

namespace module {

/** Whether the name of a source, as on the command line, is one of a car that is connected. */
bool isLiveName(const QString &name);

/** The names of the CAN interfaces and serial ports of this machine. */
QStringList livePorts();

/**
 * Connects to a car by "can:PLUGIN:INTERFACE[?bitrate=N]", "elm327:DEVICE[@BAUD]" or
 * "elm327:tcp:HOST:PORT".
 * @param car    what explains the car's own frames; may be empty
 * @param error  one line that names the source
 */
std::unique_ptr<VehicleSource> openLive(const QString &name, const CarFiles &car,
                                        const LiveSettings &settings, QString *error);

} // namespace module
