#include "stepped/moduleprocess.h"

#include "endsignals.h"
#include "runtimefolder.h"
#include "session/setup.h"
#include "stepped/steppedmodule.h"

#include <QCoreApplication>
#include <QFile>

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

/** What a child writes, up to the end of a line. */
static QByteArray readLine(int pipe)
{
    QByteArray line;
    char letter = 0;
    while (::read(pipe, &letter, 1) == 1 && letter != '\n')
        line.append(letter);
    return line;
}

/**
 * Forks. @param work  what the child does; it does not return from it
 * @param line  the first line that the child writes to its pipe
 */
static pid_t forkFor(const std::function<void(int pipe)> &work, QByteArray *line)
{
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0)
        return -1;
    std::fflush(nullptr); // otherwise the child would print it again
    const pid_t process = ::fork();
    if (process == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL); // whatever ends the bench, ends this too
        endsignals::restore();
        for (const int ofTheTerminal : {SIGINT, SIGHUP})
            ::signal(ofTheTerminal, SIG_IGN); // the bench ends this after its recordings
        ::close(ends[0]);
        work(ends[1]);
        ::_exit(1);
    }
    ::close(ends[1]);
    if (process > 0)
        *line = readLine(ends[0]);
    ::close(ends[0]);
    return process;
}

static void end(pid_t process)
{
    if (process <= 0)
        return;
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
}

ModuleProcess::ModuleProcess() : m_folder(temporaryPlace() + QStringLiteral("/norda-bus-XXXXXX")) {}

ModuleProcess::~ModuleProcess()
{
    end(m_module);
    end(m_bus);
}

QString ModuleProcess::address() const
{
    return QStringLiteral("unix:path=") + m_folder.filePath(QStringLiteral("bus"));
}

std::unique_ptr<ModuleProcess> ModuleProcess::start(const Setup &setup, QString *error)
{
    std::unique_ptr<ModuleProcess> process(new ModuleProcess);
    if (process->startBus(error) && process->startModule(setup, error))
        return process;
    return nullptr;
}

// ---- The bus ------------------------------------------------------------------------------------

static bool writeConfiguration(const QString &path, const QString &address)
{
    static const QString text = QStringLiteral(
        "<busconfig><type>session</type><auth>EXTERNAL</auth><listen>%1</listen>"
        "<policy context=\"default\"><allow send_destination=\"*\"/><allow own=\"*\"/>"
        "<allow eavesdrop=\"true\"/></policy>"
        "</busconfig>\n");
    QFile file(path);
    const QByteArray content = text.arg(address).toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

[[noreturn]] static void becomeBus(const QByteArray &configuration, int pipe)
{
    ::dup2(pipe, STDOUT_FILENO);
    if (const int nowhere = ::open("/dev/null", O_WRONLY); nowhere >= 0)
        ::dup2(nowhere, STDERR_FILENO); // it warns where it may not raise its limits
    ::execlp("dbus-daemon", "dbus-daemon", "--nofork", "--print-address", configuration.constData(),
             nullptr);
    ::_exit(1);
}

bool ModuleProcess::startBus(QString *error)
{
    const QString file = m_folder.filePath(QStringLiteral("bus.conf"));
    const QByteArray option = QFile::encodeName(QStringLiteral("--config-file=") + file);
    QByteArray printed;
    if (writeConfiguration(file, address()))
        m_bus = forkFor([&option](int pipe) { becomeBus(option, pipe); }, &printed);
    if (printed.isEmpty())
        *error = QStringLiteral("--module-process: expected dbus-daemon to start, it did not");
    return !printed.isEmpty();
}

// ---- The module ---------------------------------------------------------------------------------

[[noreturn]] static void becomeModule(const Setup &setup, const QString &address, int pipe)
{
    // GLib's event loop has a descriptor that a fork shares: either process would take the other's
    // wake-ups from it. Qt's own loop makes a new one.
    qputenv("QT_NO_GLIB", "1");
    int argc = 1;
    char name[] = "norda-bench";
    char *argv[] = {name, nullptr};
    QCoreApplication application(argc, argv);
    SteppedModule module;
    QString error;
    const bool isReady = module.open(setup, address, &error);
    const QByteArray line = error.toUtf8() + '\n';
    const bool isTold = ::write(pipe, line.constData(), size_t(line.size())) == line.size();
    ::close(pipe);
    ::_exit(isReady && isTold ? QCoreApplication::exec() : 1);
}

bool ModuleProcess::startModule(const Setup &setup, QString *error)
{
    QByteArray failure;
    const QString bus = address();
    m_module = forkFor([&](int pipe) { becomeModule(setup, bus, pipe); }, &failure);
    *error = QString::fromUtf8(failure);
    if (m_module < 0)
        *error = QStringLiteral("--module-process: expected a process for the module, got none");
    return error->isEmpty();
}
