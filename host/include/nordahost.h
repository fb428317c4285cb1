#pragma once

#include "nordahost_global.h"

class QObject;

/**
 * The reference host's objects by class name, as written in these headers: "norda::VtqAdaptor",
 * "norda::VtqService", "svaudio::AudioService", "mcu::McuService", "McuManager", "AudioManager",
 * "EventHandler", "SrcDsplCtrl", "mem::SettingsCache", "mem::SettingsFunc", "mem::SettingsUtil",
 * "cm::StatusBarControl", "cm::ReverserVideoInService", "spplfctrl::SPPlatformControl",
 * "Translator", "CallLog" and "ServiceConnection".
 *
 * Offered with C linkage so that a script or a test can steer the host with nothing but this name
 * and `QMetaObject::invokeMethod`. The objects live until the process ends; callers own nothing.
 *
 * @return the object, null for any other name and for a null pointer.
 */
extern "C" NORDAHOST_EXPORT QObject *nordaHostObject(const char *name);
