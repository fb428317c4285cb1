#include "mem/settingsutil.h"

#include "mem/settingsexe.h"

// The accessors of the camera and split-view preferences, which the host leaves to its plugins.
// Nothing is remembered: what the host wrote meanwhile is seen on the next read. The host may keep
// the texts, so none is a QStringLiteral: that one would point into the library.

static const QString factorySettings = QLatin1String("/media/flash/nvm/factory/settings.ini");

namespace mem {

int SettingsUtil::getCameraInput(int defaultValue)
{
    return getSaver()->getValue(QLatin1String("CameraInput"), factorySettings, defaultValue);
}

bool SettingsUtil::getRearInput(bool defaultValue)
{
    return getSaver()->getValue(QLatin1String("RearInput"), factorySettings, defaultValue);
}

bool SettingsUtil::getFrontInput(bool defaultValue)
{
    return getSaver()->getValue(QLatin1String("FrontInput"), factorySettings, defaultValue);
}

bool SettingsUtil::getVantiqSplit(bool defaultValue)
{
    return getSaver()->getValue(QLatin1String("VantiqSplit"), factorySettings, defaultValue);
}

void SettingsUtil::setVantiqCamera(bool on, bool notify)
{
    getSaver()->setOtherPathValue(QLatin1String("VantiqCamera"), factorySettings, on, on, true);
    if (notify)
        emit VantiqCamera(on);
}

void SettingsUtil::setVantiqSplit(bool on, bool notify)
{
    getSaver()->setOtherPathValue(QLatin1String("VantiqSplit"), factorySettings, on, on, true);
    if (notify)
        emit VantiqSplit(on);
}

} // namespace mem
