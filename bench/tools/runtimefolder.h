#pragma once

/**
 * Gives the process a private folder for sockets and the like where no login session has made one.
 * Called before the application object, which would complain.
 */
void ensureRuntimeFolder();
