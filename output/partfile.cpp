#include "partfile.h"

#include "inputfiles.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace output {

static QString systemError(int error = errno)
{
    return QStringLiteral("expected a file that can be written: %1")
        .arg(QString::fromLocal8Bit(std::strerror(error)));
}

static QString inUse()
{
    return QStringLiteral("expected a file that nothing else is writing");
}

static const char *kindName(mode_t mode)
{
    switch (mode & S_IFMT) {
    case S_IFDIR:
        return "a folder";
    case S_IFIFO:
        return "a pipe";
    case S_IFSOCK:
        return "a socket";
    case S_IFLNK:
        return "a link to nothing";
    default:
        return "a device";
    }
}

/** Never opens the file: to open a pipe waits for its other end. */
static QString targetProblem(const QByteArray &target, const InputFiles &inputs)
{
    struct stat file;
    if (lstat(target.constData(), &file) != 0)
        return errno == ENOENT ? QString() : systemError();
    if (!S_ISREG(file.st_mode))
        return QStringLiteral("expected a regular file, found %1")
            .arg(QLatin1String(kindName(file.st_mode)));
    if (inputs.contains(file))
        return QStringLiteral("expected a file that is not read at the same time");
    return {};
}

/** A link is written through: the file that it names is replaced. */
static QByteArray resolved(const QString &path)
{
    const QString target = QFileInfo(path).canonicalFilePath();
    return QFile::encodeName(target.isEmpty() ? path : target);
}

static QByteArray partName(const QByteArray &target)
{
    const int name = target.lastIndexOf('/') + 1;
    return target.left(name) + '.' + target.mid(name) + ".part";
}

/** A file system without locks protects nothing, but can be written. */
static bool lock(int file)
{
    return flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

/** Not one of the standard streams, even where they are closed: what is printed goes there. */
static Descriptor openFile(const QByteArray &path, int flags)
{
    Descriptor file(::open(path.constData(), flags | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666));
    if (file.isValid() && file.number() <= STDERR_FILENO)
        return Descriptor(fcntl(file.number(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    return file;
}

static bool hasName(int file, const QByteArray &path)
{
    struct stat opened;
    struct stat named;
    return fstat(file, &opened) == 0 && lstat(path.constData(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

PartFile::PartFile()
{
    // Beyond a limit on file sizes, write() shall fail instead of ending the program.
    static const auto before = std::signal(SIGXFSZ, SIG_IGN);
    Q_UNUSED(before)
}

PartFile::~PartFile()
{
    if (isOpen() && !m_isPublished)
        unlink(m_current.constData());
}

QString PartFile::refusal(const QString &path, const InputFiles &inputs)
{
    return targetProblem(resolved(path), inputs);
}

/** Another program may write the old file, which has been published already. */
PartFile::Attempt PartFile::lockTarget(QString *problem)
{
    const Descriptor target = openFile(m_target, O_RDWR);
    if (!target.isValid()) {
        *problem = errno == ENOENT ? QString() : systemError();
        return errno == ENOENT ? Attempt::Done : Attempt::Failed;
    }
    if (!lock(target.number()))
        return Attempt::Busy;
    struct stat old;
    if (fstat(target.number(), &old) == 0)
        fchmod(m_file.number(), old.st_mode & 07777);
    return Attempt::Done;
}

PartFile::Attempt PartFile::tryOpen(const InputFiles &inputs, QString *problem)
{
    *problem = targetProblem(m_target, inputs);
    if (problem->isEmpty())
        *problem = targetProblem(m_current, inputs);
    if (!problem->isEmpty())
        return Attempt::Failed;
    Descriptor part = openFile(m_current, O_RDWR | O_CREAT);
    if (!part.isValid()) {
        *problem = systemError();
        return Attempt::Failed;
    }
    // One that gave its file the final name in the meantime has left this name free.
    if (!lock(part.number()) || !hasName(part.number(), m_current))
        return Attempt::Busy;
    m_file = std::move(part);
    const Attempt attempt = lockTarget(problem);
    if (attempt == Attempt::Done && ftruncate(m_file.number(), 0) == 0)
        return attempt;
    if (attempt == Attempt::Done)
        *problem = systemError();
    unlink(m_current.constData());
    m_file = Descriptor();
    return attempt == Attempt::Busy ? attempt : Attempt::Failed;
}

QString PartFile::open(const QString &path, const InputFiles &inputs, int waitMs)
{
    static constexpr int pauseMs = 2;
    m_target = resolved(path);
    m_current = partName(m_target);
    QString problem;
    QElapsedTimer waited;
    waited.start();
    Attempt attempt = tryOpen(inputs, &problem);
    while (attempt == Attempt::Busy && waited.elapsed() < waitMs) {
        QThread::msleep(pauseMs);
        attempt = tryOpen(inputs, &problem);
    }
    return attempt == Attempt::Busy ? inUse() : problem;
}

QString PartFile::write(const QByteArray &content)
{
    qint64 done = 0;
    while (done < content.size()) {
        const ssize_t count =
            ::write(m_file.number(), content.constData() + done, size_t(content.size() - done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0) {
            QString problem = systemError();
            // What was written before stays whole.
            if (ftruncate(m_file.number(), m_size) != 0)
                return problem + QStringLiteral("; its last line is incomplete");
            return problem;
        }
        done += count;
    }
    m_size += done;
    return m_writeThrough ? noteChange() : QString();
}

/** What could not be written through before is known by now. */
QString PartFile::noteChange()
{
    m_writeThrough->noteChange();
    return m_writeThrough->error() == 0 ? QString() : systemError(m_writeThrough->error());
}

void PartFile::startWriteThrough()
{
    m_writeThrough = std::make_unique<WriteThrough>(m_file.number());
}

/** A failure is reported once for each file, so the thread's counts here. */
QString PartFile::sync()
{
    const int error = m_writeThrough ? m_writeThrough->finish() : 0;
    m_writeThrough.reset();
    if (error != 0)
        return systemError(error);
    return fsync(m_file.number()) == 0 ? QString() : systemError();
}

/** Without this a name that was given may be gone after a power cut. Not every file system can. */
static QString syncFolderOf(const QByteArray &path)
{
    const QByteArray folder = path.left(path.lastIndexOf('/') + 1) + '.';
    const Descriptor opened = openFile(folder, O_RDONLY | O_DIRECTORY);
    const bool isSynced = !opened.isValid() || fsync(opened.number()) == 0 || errno == EINVAL;
    return isSynced ? QString() : systemError();
}

QString PartFile::publish(const InputFiles &inputs)
{
    QString problem = targetProblem(m_target, inputs);
    if (!problem.isEmpty())
        return problem;
    if (::rename(m_current.constData(), m_target.constData()) != 0)
        return systemError();
    m_current = m_target;
    m_isPublished = true;
    return syncFolderOf(m_target);
}

QString PartFile::rename(const QString &path, const InputFiles &inputs)
{
    const QByteArray target = resolved(path);
    QString problem = targetProblem(target, inputs);
    if (!problem.isEmpty())
        return problem;
    if (::rename(m_current.constData(), target.constData()) != 0)
        return systemError();
    m_current = target;
    return syncFolderOf(target);
}

QString PartFile::close()
{
    return ::close(m_file.release()) == 0 ? QString() : systemError();
}

} // namespace output
