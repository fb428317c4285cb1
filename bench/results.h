#pragma once

#include "inputfiles.h"

class PictureTrail;
class QJsonObject;
class Rig;
struct Options;

/**
 * Ends the session and writes the requested results, with or without a window. Each failure is
 * printed, and the others are still written.
 * @param trail  the pictures for a report
 * @return whether all of them are complete, the recording included
 */
bool writeResults(const Options &options, Rig *rig, const PictureTrail *trail);

/** @param error  one line that names the file */
bool writeSummary(const QString &path, const QJsonObject &summary, const output::InputFiles &inputs,
                  QString *error);
