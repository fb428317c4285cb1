#pragma once

#include "inputfiles.h"

class QJsonObject;
class Rig;
struct Options;

/**
 * Ends the session and writes the requested results, with or without a window. Each failure is
 * printed, and the others are still written.
 * @return whether all of them are complete, the recording included
 */
bool writeResults(const Options &options, Rig *rig);

/** @param error  one line that names the file */
bool writeSummary(const QString &path, const QJsonObject &summary, const output::InputFiles &inputs,
                  QString *error);
