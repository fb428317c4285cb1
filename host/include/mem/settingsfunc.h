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
    static SettingsFunc *instance();

    /**
     * Sets a key.
     * @param defaultValue  what the key's owner takes an unset key for
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
