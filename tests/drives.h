#pragma once

#include "testpaths.h"

#include <QString>
#include <QtGlobal>

/** Where a recorded drive would lie; tests skip, saying so, where it is absent. */
inline QString recordedDrive(const char *name)
{
    const QString folder = testpaths::source("../shared/drives");
    return qEnvironmentVariable("NORDA_DRIVES", folder) + QLatin1Char('/') + QLatin1String(name);
}
