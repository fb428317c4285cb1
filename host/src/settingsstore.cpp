#include "settingsstore.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QStandardPaths>

static QString hostRoot()
{
    const QString root = qEnvironmentVariable("NORDA_HOST_ROOT");
    if (!root.isEmpty())
        return QDir::cleanPath(root);
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
        warnOnce("lies outside of the host's root and is not used");
        m_path.clear();
    }
}

void SettingsStore::warnOnce(const char *problem) const
{
    static QSet<QString> told;
    const QString message =
        QStringLiteral("settings file %1: %2").arg(m_path, QLatin1String(problem));
    if (told.contains(message))
        return;
    told.insert(message);
    qWarning("%s", qPrintable(message));
}

// QSettings takes almost anything for an INI file; these are the contents that it would lose.
bool SettingsStore::isUsable() const
{
    const QFileInfo info(m_path);
    if (!info.exists())
        return true;
    QFile file(m_path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly)) {
        warnOnce("expected a readable file; defaults are used");
        return false;
    }
    while (!file.atEnd()) {
        const QByteArray line = file.readLine(4096).trimmed();
        const bool isEntry = line.isEmpty() || line.startsWith(';') || line.startsWith('#') ||
                             (line.startsWith('[') && line.endsWith(']')) || line.indexOf('=') > 0;
        if (!isEntry || line.contains('\0')) {
            warnOnce("expected lines of the form key=value; defaults are used");
            return false;
        }
    }
    return true;
}

QVariant SettingsStore::read(const QString &key) const
{
    if (m_path.isEmpty() || !isUsable())
        return QVariant();
    return QSettings(m_path, QSettings::IniFormat).value(key);
}

void SettingsStore::write(const QString &key, const QVariant &value)
{
    if (m_path.isEmpty() || !isUsable())
        return;
    QDir().mkpath(QFileInfo(m_path).path());
    QSettings settings(m_path, QSettings::IniFormat);
    settings.setValue(key, value);
    settings.sync();
    if (settings.status() != QSettings::NoError)
        warnOnce("cannot be written; the setting is lost");
}
