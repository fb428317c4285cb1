#pragma once

#include <QString>

/** Where temporary folders go, whether it can be written or not: TMPDIR, or /tmp. */
QString temporaryPlace();

/**
 * Makes a private runtime folder where no login session has made one. Call it before there is an
 * application object, which would warn otherwise.
 */
void ensureRuntimeFolder();
