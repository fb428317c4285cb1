#pragma once

#include "nordahost_global.h"

#include <QObject>
#include <QVariant>

namespace mem {

/** The host's general settings store; its keys have no file of their own. */
class NORDAHOST_EXPORT SettingsFunc : public QObject
{
    Q_OBJECT
public:
    /** The one object: made on the first call, never null, never deleted. */
    static SettingsFunc *instance();

    /**
     * Sets a key.
     * @param key           the key, as its owner documents it
     * @param defaultValue  what the key's owner takes an unset key for
     * @param value         the new value
     * @param persist       whether the value is kept over a restart
     */
    Q_INVOKABLE
    void setValue(const QString &key, const QVariant &defaultValue, const QVariant &value,
                  bool persist);
    /** The value of a key; the default when it was never set. */
    Q_INVOKABLE
    QVariant getValue(const QString &key, const QVariant &defaultValue) const;

private:
    SettingsFunc();

    QVariantHash m_values;
};

} // namespace mem
