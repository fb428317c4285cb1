#pragma once

#include <QStringList>

class QPixmap;
class QWidget;

// The resource paths of images on the screen, found by comparing pixels.

/** The paths of what a widget shows: as a label, as a key, or by its style sheet. */
QStringList imagesShownBy(const QWidget *widget);
/** The path of an image, empty when no resource has its pixels. */
QString imagePathOf(const QPixmap &pixmap);
