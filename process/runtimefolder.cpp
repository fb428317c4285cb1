#include "runtimefolder.h"

#include <QDir>

#include <sys/stat.h>
#include <unistd.h>

/** Anybody can make folders beside it, so one that is there already must be this user's alone. */
static bool isPrivate(const QByteArray &folder)
{
    struct stat status = {};
    return ::lstat(folder.constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == ::geteuid() && (status.st_mode & 0777) == 0700;
}

/** Qt takes the current or the root folder where this one does not exist. */
QString temporaryPlace()
{
    const QString place = QFile::decodeName(qgetenv("TMPDIR"));
    return QDir(place.isEmpty() ? QStringLiteral("/tmp") : place).absolutePath();
}

void ensureRuntimeFolder()
{
    if (qEnvironmentVariableIsSet("XDG_RUNTIME_DIR"))
        return;
    QByteArray folder =
        QStringLiteral("%1/norda-runtime-%2").arg(temporaryPlace()).arg(::geteuid()).toLocal8Bit();
    ::mkdir(folder.constData(), 0700);
    if (!isPrivate(folder)) {
        folder += "-XXXXXX";
        if (!::mkdtemp(folder.data()))
            return;
    }
    qputenv("XDG_RUNTIME_DIR", folder);
}
