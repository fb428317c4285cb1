#pragma once

#include "nordahost_global.h"

#include <QObject>
#include <QVariant>

namespace mem {

/**
 * Reads and writes settings files. Every read goes to the file, so a value written by others
 * is seen at once. Absolute paths of the head unit ("/media/flash/nvm/...") are resolved below
 * `NORDA_HOST_ROOT`; nothing outside it is written.
 *
 * A missing file answers every read with the default and is created by the first write. One that
 * is unreadable or damaged also answers with the defaults, is reported once, in one warning, and
 * is never emptied or replaced.
 */
class NORDAHOST_EXPORT SettingsExe : public QObject
{
    Q_OBJECT
public:
    /** @param parent  owns the object; may be null */
    explicit SettingsExe(QObject *parent = nullptr);
    ~SettingsExe() override;

    /** The value of a key of a file; the default when it is absent or of another kind. */
    bool getValue(const QString &key, const QString &file, bool defaultValue) const;
    /** The same for a number. */
    int getValue(const QString &key, const QString &file, int defaultValue) const;
    /**
     * Writes a key into the factory settings file.
     * @param key           the key, without a group
     * @param file          path of the file on the head unit
     * @param defaultValue  what the key's owner takes an unset key for
     * @param value         the new value: a switch, a number or a text
     * @param sync          whether the file is on disk when the call returns
     */
    void setOtherPathValue(const QString &key, const QString &file, const QVariant &defaultValue,
                           const QVariant &value, bool sync);
};

} // namespace mem
