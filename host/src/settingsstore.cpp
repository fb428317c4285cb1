#include "settingsstore.h"

#include "initext.h"
#include "outputfile.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>

static constexpr qint64 largestFile = 1 << 20;
static constexpr int longestWaitMs = 2000; // for other processes, each of which saves one value

/** Where the head unit's "/" is. Ends with a slash, and holds neither ".." nor "//". */
static QString hostRoot()
{
    QString root = qEnvironmentVariable("NORDA_HOST_ROOT");
    if (root.isEmpty())
        root = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
               QStringLiteral("/norda-host");
    root = QDir::cleanPath(QFileInfo(root).absoluteFilePath());
    return root.endsWith(QLatin1Char('/')) ? root : root + QLatin1Char('/');
}

QString SettingsStore::localPath(const QString &headUnitPath)
{
    const QString root = hostRoot();
    const QString path = QDir::cleanPath(root + headUnitPath);
    return path.startsWith(root) ? path : QString();
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

static bool isStorable(const QString &key, const QVariant &value)
{
    // Not with "$", which also matches before a line feed at the end.
    static const QRegularExpression plain(QStringLiteral("\\A[\\w.-]+(/[\\w.-]+)?\\z"));
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
    if (!load())
        return false;
    if (change(key, value.toString()))
        return true;
    warnOnce("cannot be written; the setting is lost");
    return false;
}

/** The file is locked from before it is read, so that no other process's change is lost. */
bool SettingsStore::change(const QString &key, const QString &value) const
{
    QDir().mkpath(QFileInfo(m_path).path());
    if (isReadOnly(m_path))
        return false;
    output::ResultFile file(m_path, {}, longestWaitMs);
    std::optional<IniText> content = load();
    if (!file.isOpen() || !content)
        return false;
    content->setValue(key, value);
    return file.write(content->text()) && file.commit();
}
