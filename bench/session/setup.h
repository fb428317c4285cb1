#pragma once

#include "carfiles.h"
#include "faults.h"
#include "pages.h"
#include "simulator/climate.h"

#include <QString>

/**
 * What a session is made from. The command line and scenarios fill it, a saved scenario states it.
 */
struct Setup
{
    QString source = QStringLiteral("simulator");
    module::Trim trim = module::Trim::Full;
    module::CarFiles car; ///< what explains a raw CAN log
    module::Faults faults;
    int page = firstPage;
    bool isPageGiven = false; ///< otherwise a recording opens its own first page
    double speed = 1.0;       ///< factor of real time, 0 for as fast as it can
    qint64 durationMs = -1;   ///< -1 for the whole drive
    QString record;           ///< where to record, empty for nowhere
    qint64 recordLimit = 0;   ///< in bytes
    int journalLimit = 0;     ///< events that are kept to look at; the counts are complete anyway
};
