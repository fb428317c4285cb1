#pragma once

#include <QColor>

class QApplication;
class QFont;
class QPalette;
class QString;

/** The colours and letters of the head unit at night. */
namespace night {

const QColor background(0x0D, 0x13, 0x1A);
const QColor panel(0x1A, 0x23, 0x2D);
const QColor hairline(0x2A, 0x37, 0x44);
const QColor text(0xF4, 0xF7, 0xFA);
const QColor secondary(0x9D, 0xB0, 0xC2);
const QColor accent(0x36, 0xC5, 0xF0);
const QColor amber(0xFF, 0xB2, 0x24);
const QColor red(0xFF, 0x4F, 0x4F);

/** All roles in all groups, so that a screen looks the same in any application. */
QPalette palette();
/** The unit's font, in pixels of the screen. */
QFont letters(int pixels, bool bold = false);
/** Gives them to an application, with a style and the unit's font. */
void apply(QApplication *application, const QString &style);

} // namespace night
