#pragma once

#include "inputfiles.h"

#include <QString>
#include <QStringList>

class Rig;

/**
 * Writes a picture of every page and of each notable state.
 * @param inputs  files that no picture replaces
 * @param error   one line, when a picture cannot be written
 * @return the files written
 */
QStringList writeGallery(const QString &folder, Rig *rig, const output::InputFiles &inputs,
                         QString *error);
