#pragma once

#include "carfiles.h"
#include "faults.h"
#include "live/livesettings.h"
#include "trim.h"

namespace moduled {

/** The command line, checked. */
struct Options
{
    QString source = QStringLiteral("simulator");
    module::Trim trim = module::Trim::Full;
    module::CarFiles car;
    module::LiveSettings live;
    module::Faults faults;
    double speed = 1;
    QString bus = QStringLiteral("system"); ///< "session", "system", or the address of a bus
    bool relays = false;                    ///< the signals that other programs send
    bool printsInterface = false;

    QString text; ///< what --help or --version prints; everything else is unset then

    /**
     * @param arguments  with the program's name first
     * @param error      one line that names the option and what it expects
     * @return false when the arguments cannot be used
     */
    bool parse(const QStringList &arguments, QString *error);
};

} // namespace moduled
