#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

/** The files that a test writes, in a folder of its own. */
class TestFolder
{
public:
    QString path() const { return m_folder.path(); }
    QString filePath(const char *name) const { return m_folder.filePath(QLatin1String(name)); }
    /** Writes a file. @return its path */
    QString write(const char *name, const QByteArray &content) const
    {
        QFile file(filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", name);
        return file.fileName();
    }

private:
    QTemporaryDir m_folder;
};
