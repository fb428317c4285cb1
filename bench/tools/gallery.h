#pragma once

#include <QString>
#include <QStringList>

class Rig;

/**
 * Writes a picture of every page and of each notable state.
 * @param error  one line, when a picture cannot be written
 * @return the files written
 */
QStringList writeGallery(const QString &folder, Rig *rig, QString *error);
