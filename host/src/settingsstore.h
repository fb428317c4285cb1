#pragma once

#include <QString>
#include <QVariant>

#include <optional>

class IniText;

/**
 * One settings file of the head unit, kept below `NORDA_HOST_ROOT`. Nothing is held in memory: each
 * read sees what is on disk, each write is there when it returns. A file that cannot be read or
 * written is reported once and left as it is.
 */
class SettingsStore
{
public:
    /** @param headUnitPath  the file's absolute path on the head unit */
    explicit SettingsStore(const QString &headUnitPath);

    /** The value of a key as text, invalid when there is none. */
    QVariant read(const QString &key) const;
    /**
     * Stores a truth value, a number or a text.
     * @return whether it is on disk
     */
    bool write(const QString &key, const QVariant &value);

    /** The path on this machine of a file of the head unit; empty for one outside the root. */
    static QString localPath(const QString &headUnitPath);

private:
    std::optional<IniText> load() const;
    bool change(const QString &key, const QString &value) const;
    void warnOnce(const char *problem) const;

    QString m_path;
};
