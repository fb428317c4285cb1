#pragma once

/**
 * Makes a private runtime folder where no login session has made one. Call it before there is an
 * application object, which would warn otherwise.
 */
void ensureRuntimeFolder();
