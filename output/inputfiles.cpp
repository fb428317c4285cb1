#include "inputfiles.h"

#include <QFile>

#include <sys/stat.h>

namespace output {

static QPair<quint64, quint64> identity(const struct stat &file)
{
    return {quint64(file.st_dev), quint64(file.st_ino)};
}

InputFiles::InputFiles(std::initializer_list<QString> paths)
{
    for (const QString &path : paths)
        add(path);
}

void InputFiles::add(const QString &path)
{
    struct stat file;
    if (stat(QFile::encodeName(path).constData(), &file) == 0)
        m_identities.append(identity(file));
}

bool InputFiles::contains(const struct stat &file) const
{
    return m_identities.contains(identity(file));
}

} // namespace output
