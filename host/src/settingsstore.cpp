#include "settingsstore.h"

#include "initext.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>
#include <QSaveFile>
#include <QSet>
#include <QStandardPaths>

static constexpr qint64 largestFile = 1 << 20;
static constexpr int lockMs = 200; // another process holds the lock for one small write

static QString hostRoot()
{
    const QString root = qEnvironmentVariable("NORDA_HOST_ROOT");
    if (!root.isEmpty())
        return QDir::cleanPath(QFileInfo(root).absoluteFilePath());
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/norda-host");
}

QString SettingsStore::localPath(const QString &headUnitPath)
{
    const QString root = hostRoot();
    const QString path = QDir::cleanPath(root + QLatin1Char('/') + headUnitPath);
    return path.startsWith(root + QLatin1Char('/')) ? path : QString();
}

SettingsStore::SettingsStore(const QString &headUnitPath) : m_path(localPath(headUnitPath))
{
    if (m_path.isEmpty()) {
        m_path = headUnitPath;
        warnOnce("is outside the host's root and is not used");
        m_path.clear();
    }
}

void SettingsStore::warnOnce(const char *problem) const
{
    static QSet<QString> warned;
    const QString message =
        QStringLiteral("settings file %1: %2").arg(m_path, QLatin1String(problem));
    if (warned.contains(message))
        return;
    warned.insert(message);
    qWarning("%s", qPrintable(message));
}

// Not through QSettings: it accepts almost any text as an INI file, rewrites what it did not
// understand, and detects changes of the file by size and time stamp only.
std::optional<IniText> SettingsStore::load() const
{
    const QFileInfo info(m_path);
    if (!info.exists())
        return IniText(QByteArray());
    QFile file(m_path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly)) {
        warnOnce("expected a readable file; defaults are used");
        return std::nullopt;
    }
    const IniText content(file.read(largestFile));
    if (!file.atEnd() || !content.isValid()) {
        warnOnce("expected lines of the form key=value; defaults are used");
        return std::nullopt;
    }
    return content;
}

QVariant SettingsStore::read(const QString &key) const
{
    if (m_path.isEmpty())
        return QVariant();
    const std::optional<IniText> content = load();
    const QString value = content ? content->value(key) : QString();
    return value.isNull() ? QVariant() : QVariant(value);
}

// A head unit runs as root, whom the file system lets write everywhere.
static bool isReadOnly(const QString &path)
{
    const auto writers = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    return QFile::exists(path) && !(QFile::permissions(path) & writers);
}

bool SettingsStore::save(const IniText &content) const
{
    if (isReadOnly(m_path))
        return false;
    QSaveFile file(m_path);
    const QByteArray text = content.text();
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit();
}

static bool isStorable(const QString &key, const QVariant &value)
{
    static const QRegularExpression plain(QStringLiteral("^[\\w.-]+(/[\\w.-]+)?$"));
    return plain.match(key).hasMatch() && value.canConvert<QString>();
}

bool SettingsStore::write(const QString &key, const QVariant &value)
{
    if (m_path.isEmpty())
        return false;
    if (!isStorable(key, value)) {
        warnOnce("expected a plain key and a truth value, a number or a text; the setting is lost");
        return false;
    }
    QDir().mkpath(QFileInfo(m_path).path());
    QLockFile lock(m_path + QStringLiteral(".lock"));
    const bool isLocked = lock.tryLock(lockMs);
    std::optional<IniText> content = load();
    if (!content)
        return false;
    content->setValue(key, value.toString());
    if (isLocked && save(*content))
        return true;
    warnOnce("cannot be written; the setting is lost");
    return false;
}
