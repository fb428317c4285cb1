#pragma once

#include <QString>

/**
 * Decides what Qt draws on. Qt itself would ignore case, take a list, and read its environment and
 * the arguments again, so it is given one checked platform and nothing else.
 */
namespace platform {

/** Whether there may be something to show a window on: named, or found in the environment. */
bool isExpected(const QString &name);
/** For work that nobody watches. */
void useOffscreen();
/**
 * Uses the first platform that works here. Call it before there is an application object.
 * @param name   from the command line, empty for the environment's or Qt's own choice
 * @param error  one line, when none works or a port cannot be listened on
 */
bool use(const QString &name, QString *error);

} // namespace platform
