#include "trim.h"

#include "simulator/controls.h"

namespace module {

// The words of the trim control are in the order of the enumerators.

QString trimName(Trim trim)
{
    return Controls::words(Controls::ClimateTrim).value(int(trim));
}

bool trimFromName(const QString &name, Trim *trim)
{
    const int index = Controls::words(Controls::ClimateTrim).indexOf(name);
    *trim = Trim(qMax(0, index));
    return index >= 0;
}

} // namespace module
