#include "pluginfile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QPluginLoader>

QString usualPlugin()
{
    const QDir folder(QCoreApplication::applicationDirPath());
    const QString built = folder.filePath(QStringLiteral("../plugins/libnordaPlugin.so"));
    const QString installed = folder.filePath(QStringLiteral(NORDA_INSTALLED_PLUGIN));
    return QDir::cleanPath(QFile::exists(built) ? built : installed);
}

/** Qt prints what it thinks of a file, which the caller states in a line of its own. */
class SilentQt
{
public:
    SilentQt() : m_previous(qInstallMessageHandler(ignore)) {}
    ~SilentQt() { qInstallMessageHandler(m_previous); }
    Q_DISABLE_COPY(SilentQt)

private:
    static void ignore(QtMsgType, const QMessageLogContext &, const QString &) {}

    QtMessageHandler m_previous;
};

static QString faultOfOpening(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly)
               ? QString()
               : QStringLiteral("expected a plugin that can be read: %1").arg(file.errorString());
}

QString faultOfPluginFile(const QString &file)
{
    const QFileInfo info(file);
    if (info.isFile()) // opening a pipe would wait for its writer
        return faultOfOpening(file);
    if (info.isDir())
        return QStringLiteral("expected a plugin, found a directory");
    return info.exists() ? QStringLiteral("expected a plugin, found something other than a file")
                         : QStringLiteral("expected a plugin, found no such file");
}

QJsonObject openPluginFile(QPluginLoader *loader, const QString &file)
{
    const SilentQt silent;
    loader->setFileName(QFileInfo(file).absoluteFilePath());
    return loader->metaData();
}
