#include "unitsettings.h"

#include "calllog.h"
#include "mem/settingsexe.h"
#include "mem/settingsfunc.h"
#include "mem/settingsutil.h"

#include <QSignalBlocker>

namespace unitsettings {

static const QString factorySettings = QStringLiteral("/media/flash/nvm/factory/settings.ini");
static const QString cameraInputKey = QStringLiteral("CameraInput");
static const QString lastPageKey = QStringLiteral("UnitLastPage");
static const QString languageKey = QStringLiteral("UnitLanguage");

/** In the file of general settings. */
static QString kept(const QString &key)
{
    const QSignalBlocker silent(CallLog::instance());
    return mem::SettingsFunc::instance()->getValue(key, QString()).toString();
}

static void keep(const QString &key, const QString &text)
{
    const QSignalBlocker silent(CallLog::instance());
    mem::SettingsFunc::instance()->setValue(key, QString(), text, true);
}

void stateCameraInput()
{
    static constexpr int unstated = -1;
    static constexpr int rear = 1;
    const QSignalBlocker silent(CallLog::instance());
    mem::SettingsExe *saver = mem::SettingsUtil::instance()->getSaver();
    if (saver->getValue(cameraInputKey, factorySettings, unstated) == unstated)
        saver->setOtherPathValue(cameraInputKey, factorySettings, 0, rear, true);
}

bool hasRearCamera()
{
    const QSignalBlocker silent(CallLog::instance());
    const mem::SettingsExe *saver = mem::SettingsUtil::instance()->getSaver();
    return saver->getValue(cameraInputKey, factorySettings, 0) != 0 &&
           saver->getValue(QStringLiteral("RearInput"), factorySettings, true);
}

bool prefersSplit()
{
    const QSignalBlocker silent(CallLog::instance());
    const bool ignored = mem::SettingsFunc::instance()
                             ->getValue(QStringLiteral("Camera_Ignore_Spilt"), false)
                             .toBool();
    return !ignored && mem::SettingsUtil::instance()->getSaver()->getValue(
                           QStringLiteral("VantiqSplit"), factorySettings, false);
}

QString lastPage()
{
    return kept(lastPageKey);
}

void keepLastPage(const QString &text)
{
    keep(lastPageKey, text);
}

QString language()
{
    return kept(languageKey);
}

void keepLanguage(const QString &language)
{
    keep(languageKey, language);
}

} // namespace unitsettings
