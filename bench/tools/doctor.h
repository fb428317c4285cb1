#pragma once

#include <QString>

/**
 * Tells whether a head unit would accept a plugin, and if not, what to do about it: one line for
 * each thing that is right on the standard output, one for what is wrong in `error`. The plugin
 * runs in a process of its own, which it may crash. Call it before there is an application object.
 */
bool checkPlugin(const QString &file, QString *error);
