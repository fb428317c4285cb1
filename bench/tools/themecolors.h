#pragma once

#include <QColor>
#include <QString>

class QPalette;

/** Light and dark colours for the bench's own windows. The unit's screen has its own, see night. */
namespace theme {

enum class Mode { Auto, Light, Dark };

/** @return whether the name is "auto", "light" or "dark" */
bool modeFromName(const QString &name, Mode *mode);
QString nameOf(Mode mode);

struct Colors
{
    QColor window;    ///< behind everything
    QColor panel;     ///< of fields, lists and keys
    QColor hairline;  ///< between them
    QColor selection; ///< behind selected text
    QColor text;
    QColor secondary; ///< of captions and what is hidden
    QColor faded;     ///< of what is disabled
    QColor accent;
    QColor amber;
    QColor red;
    QColor green;
    QColor violet;
};

/** Whether text is darker than what is behind it. */
bool isLight(const QPalette &palette);
/** The colours that go with a widget's palette. */
const Colors &colors(const QPalette &palette);
const Colors &colors(bool light);
/** The palette of a window. */
QPalette palette(bool light);

} // namespace theme
