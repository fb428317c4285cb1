#pragma once

#include "inputfiles.h"

#include <QString>

namespace module {

/** Whether a car is asked at all. */
enum class Asking {
    Never,
    Auto,  ///< not while another tester asks, the engine is off, or the car does not answer
    Always ///< whatever happens
};

/** How a car is driven that is connected now. */
struct LiveSettings
{
    Asking asking = Asking::Auto;
    int requestsPerSecond = 20;
    QString log;               ///< a candump log to write, empty for none
    output::InputFiles inputs; ///< what the run reads, which the log does not replace
    bool waitsForCar = false;  ///< one that is not there at the start is tried again, too
};

} // namespace module
