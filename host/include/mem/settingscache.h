#pragma once

#include "nordahost_global.h"

#include <QObject>
#include <QVariant>

namespace mem {

/** State shared between the host and its plugins while the head unit runs. Not kept on disk. */
class NORDAHOST_EXPORT SettingsCache : public QObject
{
    Q_OBJECT
public:
    /** The one object: made on the first call, never null, never deleted. */
    static SettingsCache *instance();

    /** The value of a key; the default when it was never set or is of another kind. */
    Q_INVOKABLE
    int getValue(const QString &key, int defaultValue) const;
    /** The same for a switch. */
    Q_INVOKABLE
    bool getValue(const QString &key, bool defaultValue) const;
    /**
     * Sets a key.
     * @param key           the key, as its owner documents it
     * @param defaultValue  what the key's owner takes an unset key for
     * @param value         the new value
     */
    Q_INVOKABLE
    void setValue(const QString &key, const QVariant &defaultValue, const QVariant &value);

signals:
    /** A key was set, even to the value that it had. */
    void changed(const QString &key, const QVariant &value);

private:
    SettingsCache();

    QVariantHash m_values;
};

} // namespace mem
