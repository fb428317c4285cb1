#pragma once

#include "samplesource.h"

namespace module {

/**
 * Adds to a log where its quantities go missing: after several of a quantity's usual periods
 * without a value, also at the end. Nine in ten times no more than the usual period passes between
 * two values, since many logs have them in bursts. What comes at one time only has no period and
 * does not go missing.
 */
void markMissingValues(SampleLog *log);

} // namespace module
