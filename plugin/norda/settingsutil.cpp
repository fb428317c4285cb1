#include "mem/settingsutil.h"

#include "mem/settingsexe.h"

// The accessors of the camera and split-view preferences, which the host leaves to its plugins.
// Nothing is remembered: what the host wrote meanwhile is seen on the next read.

static const QString factorySettings = QStringLiteral("/media/flash/nvm/factory/settings.ini");

namespace mem {

int SettingsUtil::getCameraInput(int defaultValue)
{
    return getSaver()->getValue(QStringLiteral("CameraInput"), factorySettings, defaultValue);
}

bool SettingsUtil::getRearInput(bool defaultValue)
{
    return getSaver()->getValue(QStringLiteral("RearInput"), factorySettings, defaultValue);
}

bool SettingsUtil::getFrontInput(bool defaultValue)
{
    return getSaver()->getValue(QStringLiteral("FrontInput"), factorySettings, defaultValue);
}

bool SettingsUtil::getVantiqSplit(bool defaultValue)
{
    return getSaver()->getValue(QStringLiteral("VantiqSplit"), factorySettings, defaultValue);
}

void SettingsUtil::setVantiqCamera(bool on, bool notify)
{
    getSaver()->setOtherPathValue(QStringLiteral("VantiqCamera"), factorySettings, on, on, true);
    if (notify)
        emit VantiqCamera(on);
}

void SettingsUtil::setVantiqSplit(bool on, bool notify)
{
    getSaver()->setOtherPathValue(QStringLiteral("VantiqSplit"), factorySettings, on, on, true);
    if (notify)
        emit VantiqSplit(on);
}

} // namespace mem
