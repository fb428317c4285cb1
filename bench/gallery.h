#pragma once

#include <QString>
#include <QStringList>

class AudioStage;
class HeadUnit;
class Screen;
class Session;
struct Options;

/**
 * Writes a picture of every page and of each notable state.
 * @param error  one line, when a picture cannot be written
 * @return the files written
 */
QStringList writeGallery(const Options &options, Screen *screen, HeadUnit *unit, AudioStage *stage,
                         Session *session, QString *error);
