#pragma once

#include "carfiles.h"
#include "faults.h"
#include "inputfiles.h"
#include "live/livesettings.h"
#include "pages.h"
#include "simulator/climate.h"

#include <QString>

/**
 * What a session is made from: filled by the command line and scenarios, written by a saved
 * scenario.
 */
struct Setup
{
    QString source = QStringLiteral("simulator");
    module::Trim trim = module::Trim::Full;
    module::CarFiles car;      ///< what explains a car's own frames
    module::LiveSettings live; ///< for a car that is connected
    module::Faults faults;
    QString language; ///< of the unit, empty for the one that it has
    int page = firstPage;
    bool isPageGiven = false;      ///< otherwise a recording opens its own first page
    double speed = 1.0;            ///< factor of real time, 0 for unlimited
    qint64 durationMs = -1;        ///< -1 for the whole drive
    QString record;                ///< file to record to, empty for none
    qint64 recordLimit = 0;        ///< in bytes
    bool hasModuleProcess = false; ///< whether the module is in a process of its own
    QString moduleAddress;         ///< the bus that it is on, once it runs
    QString moduleRecord;          ///< file that it records to, empty for none
    output::InputFiles inputs;     ///< what the run reads, which no output replaces
    int journalLimit = 0;          ///< events that are kept; the totals count all
};
