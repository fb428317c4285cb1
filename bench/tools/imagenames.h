#pragma once

#include <QStringList>

class QPixmap;
class QWidget;

// Under which resource path an image on the screen can be found, whoever has loaded it: the
// resources are searched for the same pixels.

/** The paths of what a widget shows: as a label, as a key, or by its style sheet. */
QStringList imagesShownBy(const QWidget *widget);
/** The path of an image, empty when no resource has its pixels. */
QString imagePathOf(const QPixmap &pixmap);
