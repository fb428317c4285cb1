#pragma once

#include <QString>

/**
 * The unit's own settings, in the same files that the plugin reads. The call log leaves these reads
 * out, since the plugin did not make them.
 */
namespace unitsettings {

/** States that the unit has a rear camera, unless its owner has stated otherwise. */
void stateCameraInput();
/** Whether there is a rear camera to show. */
bool hasRearCamera();
/** Whether the camera opens beside what matters on the page. */
bool prefersSplit();
/** Which page was open last, in the words of who keeps it; empty for none. */
QString lastPage();
/** Is on disk when it returns. */
void keepLastPage(const QString &text);
/** The language that was chosen last; empty for none. */
QString language();
/** Is on disk when it returns. */
void keepLanguage(const QString &language);

} // namespace unitsettings
