#pragma once

#include "testpaths.h"

#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <csignal>
#include <cstdlib>

/** A program of this build in a process of its own, which the test ends. */
class StartedProgram
{
public:
    /**
     * Through the shell, since a QProcess has no place under emulation.
     * @param settings  of its environment, as for env
     */
    explicit StartedProgram(const QString &program, const QString &options,
                            const QString &settings = {})
    {
        const QString line =
            QStringLiteral("cd '%1'; (sh -c 'echo $$ >pid; exec env %2 %3 %4' >out 2>err "
                           "</dev/null; echo $? >code) &")
                .arg(m_folder.path(), settings, command(program), options);
        m_isStarted = std::system(qPrintable(line)) == 0;
    }
    StartedProgram(const StartedProgram &) = delete;
    StartedProgram &operator=(const StartedProgram &) = delete;
    ~StartedProgram() { end(SIGKILL); }

    static QString command(const QString &program)
    {
        return (testpaths::emulator() + QLatin1Char(' ') + testpaths::buildFolder() +
                QStringLiteral("/bin/") + program)
            .trimmed();
    }

    bool isStarted() const { return m_isStarted; }
    QString folder() const { return m_folder.path(); }
    QString out() const { return content("out"); }
    QString err() const { return content("err"); }

    /** Ends it with a signal. @return its exit code, -1 when it does not end */
    int end(int signal = SIGTERM)
    {
        const int pid = content("pid").toInt();
        if (pid > 0 && content("code").isEmpty())
            ::kill(pid, signal);
        return exitCode();
    }
    int exitCode() const
    {
        for (int i = 0; m_isStarted && i < 600; ++i) {
            const QString code = content("code");
            if (code.endsWith('\n'))
                return code.toInt();
            QThread::msleep(50);
        }
        return -1;
    }

private:
    QString content(const char *name) const
    {
        QFile file(m_folder.filePath(QLatin1String(name)));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    QTemporaryDir m_folder;
    bool m_isStarted = false;
};
