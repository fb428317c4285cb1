#pragma once

#include "adapterlink.h"
#include "carfiles.h"

namespace ecu {

/** The command line, checked. */
struct Options
{
    QString source = QStringLiteral("simulator");
    module::CarFiles files;
    double speed = 1;
    qint64 durationMs = 0; ///< in drive time, 0 for no end

    QString can; ///< plugin and interface, empty for none
    bool hasTerminal = false;
    QString link;     ///< to the terminal, empty for none
    int tcpPort = -1; ///< 0 for any that is free, -1 for none

    Car car;
    CarBus::Settings bus;
    AdapterLink::Faults faults;

    QString text; ///< what --help or --version prints; everything else is unset then

    /**
     * @param arguments  with the program's name first
     * @param error      one line that names the option and what it expects
     * @return false when the arguments cannot be used
     */
    bool parse(const QStringList &arguments, QString *error);
};

} // namespace ecu
