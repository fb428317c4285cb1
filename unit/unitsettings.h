#pragma once

/**
 * The unit's own settings, in the same files that the plugin reads. Looking them up is nothing that
 * the plugin asked for, so the call log leaves it out.
 */
namespace unitsettings {

/** States that the unit has a rear camera, unless its owner has stated otherwise. */
void stateCameraInput();
/** Whether the camera opens beside what matters on the page. */
bool prefersSplit();

} // namespace unitsettings
