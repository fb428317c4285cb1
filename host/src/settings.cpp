#include "settingsstore.h"

#include "calllog.h"
#include "mem/settingscache.h"
#include "mem/settingsexe.h"
#include "mem/settingsfunc.h"
#include "mem/settingsutil.h"

namespace mem {

static bool isOfKind(const QVariant &value, QMetaType::Type kind)
{
    if (kind == QMetaType::Bool) {
        const QString text = value.toString();
        return value.userType() == QMetaType::Bool || text == QLatin1String("true") ||
               text == QLatin1String("false") || text == QLatin1String("0") ||
               text == QLatin1String("1");
    }
    bool isNumber = false;
    value.toInt(&isNumber);
    return isNumber;
}

static QVariant ofKind(const QVariant &value, const QVariant &defaultValue)
{
    const auto kind = QMetaType::Type(defaultValue.userType());
    return value.isValid() && isOfKind(value, kind) ? value : defaultValue;
}

SettingsCache::SettingsCache() = default;

SettingsCache *SettingsCache::instance()
{
    static auto *const cache = new SettingsCache;
    return cache;
}

int SettingsCache::getValue(const QString &key, int defaultValue) const
{
    CallLog::report("mem::SettingsCache::getValue", key, defaultValue);
    return ofKind(m_values.value(key), defaultValue).toInt();
}

bool SettingsCache::getValue(const QString &key, bool defaultValue) const
{
    CallLog::report("mem::SettingsCache::getValue", key, defaultValue);
    return ofKind(m_values.value(key), defaultValue).toBool();
}

void SettingsCache::setValue(const QString &key, const QVariant &defaultValue,
                             const QVariant &value)
{
    CallLog::report("mem::SettingsCache::setValue", key, defaultValue, value);
    m_values.insert(key, value);
    emit changed(key, value);
}

static const QString generalStore = QStringLiteral("/media/flash/nvm/settings.ini");

SettingsFunc::SettingsFunc() = default;

SettingsFunc *SettingsFunc::instance()
{
    static auto *const settings = new SettingsFunc;
    return settings;
}

void SettingsFunc::setValue(const QString &key, const QVariant &defaultValue, const QVariant &value,
                            bool persist)
{
    CallLog::report("mem::SettingsFunc::setValue", key, defaultValue, value, persist);
    if (persist && SettingsStore(generalStore).write(key, value))
        m_values.remove(key); // the file is the source of truth from here on
    else
        m_values.insert(key, value);
}

QVariant SettingsFunc::getValue(const QString &key, const QVariant &defaultValue) const
{
    CallLog::report("mem::SettingsFunc::getValue", key, defaultValue);
    if (m_values.contains(key))
        return m_values.value(key);
    const QVariant stored = SettingsStore(generalStore).read(key);
    QVariant value = stored; // a text, which becomes what the default is where it can
    if (!stored.isValid())
        return defaultValue;
    return value.convert(defaultValue.userType()) ? value : stored;
}

SettingsExe::SettingsExe(QObject *parent) : QObject(parent) {}

SettingsExe::~SettingsExe() = default;

bool SettingsExe::getValue(const QString &key, const QString &file, bool defaultValue) const
{
    CallLog::report("mem::SettingsExe::getValue", key, file, defaultValue);
    return ofKind(SettingsStore(file).read(key), defaultValue).toBool();
}

int SettingsExe::getValue(const QString &key, const QString &file, int defaultValue) const
{
    CallLog::report("mem::SettingsExe::getValue", key, file, defaultValue);
    return ofKind(SettingsStore(file).read(key), defaultValue).toInt();
}

void SettingsExe::setOtherPathValue(const QString &key, const QString &file,
                                    const QVariant &defaultValue, const QVariant &value, bool sync)
{
    CallLog::report("mem::SettingsExe::setOtherPathValue", key, file, defaultValue, value, sync);
    SettingsStore(file).write(key, value);
}

SettingsUtil::SettingsUtil() : m_saver(new SettingsExe(this)) {}

SettingsUtil *SettingsUtil::instance()
{
    static auto *const settings = new SettingsUtil;
    return settings;
}

} // namespace mem
