#pragma once

#include "touchevent.h"

namespace norda {

/** The beep that answers a touch. */
void clickBeep();

/** Asks the host to open another page or the camera view. */
void navigateTo(Qx::Touch destination);

} // namespace norda
