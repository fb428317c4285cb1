#pragma once

#include "testpaths.h"

#include <QString>
#include <QtGlobal>

/** Where a real car's DBC file and map would lie; tests skip, saying so, where they are absent. */
inline QString dbcFile(const char *name)
{
    const QString folder = testpaths::source("../shared/dbc");
    return qEnvironmentVariable("NORDA_DBC", folder) + QLatin1Char('/') + QLatin1String(name);
}
