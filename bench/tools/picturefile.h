#pragma once

#include "inputfiles.h"

class QImage;

/**
 * Writes a picture as PNG.
 * @param inputs  files that it must not replace
 * @param error   one line that names the file
 */
bool writePicture(const QString &path, const QImage &picture, const output::InputFiles &inputs,
                  QString *error);
