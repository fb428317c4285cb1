#pragma once

#include <QString>

/** Where things lie in this build. One file alone knows, so that no other depends on the folder. */
namespace testpaths {

QString pluginFile();
QString hostFile();
/** The bench as a command: code for another processor comes with its emulator. */
QString benchFile();
/** What runs a program of this build, empty where it runs by itself. */
QString emulator();
/** A file or folder of the source tree. */
QString source(const QString &path);
QString sourceFolder();
QString buildFolder();
/** A plugin that a head unit must refuse, by its fault. */
QString brokenPlugin(const QString &fault);
/** One that prints the unit's language. */
QString languagePlugin();
QString cmake();
/** Finds what a source has to translate. */
QString lupdate();
QString readelf();

} // namespace testpaths
