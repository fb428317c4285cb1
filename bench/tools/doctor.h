#pragma once

#include <QString>

/**
 * Checks whether a head unit would accept a plugin: prints one line for each passed check; `error`
 * gets one line with the fault and its remedy. The plugin runs in a process of its own, which it
 * may crash. Call it before there is an application object.
 */
bool checkPlugin(const QString &file, QString *error);
