#pragma once

#include "testpaths.h"

#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <QThread>

#include <csignal>
#include <cstdlib>

/** A program in a process of its own, which the test ends. */
class StartedProgram
{
public:
    /**
     * Through the shell, since a QProcess has no place under emulation.
     * @param line  program and arguments, as the shell reads them
     */
    explicit StartedProgram(const QString &line)
    {
        const QString shell =
            QStringLiteral("cd '%1'; (sh -c 'echo $$ >pid; exec %2' >out 2>err </dev/null; "
                           "echo $? >code) &")
                .arg(m_folder.path(), line);
        m_isStarted = std::system(qPrintable(shell)) == 0;
    }
    /**
     * A program of this build.
     * @param settings  of its environment, as for env
     */
    StartedProgram(const QString &program, const QString &options, const QString &settings = {})
        : StartedProgram(QStringLiteral("env %1 %2 %3").arg(settings, command(program), options))
    {
    }
    StartedProgram(const StartedProgram &) = delete;
    StartedProgram &operator=(const StartedProgram &) = delete;
    ~StartedProgram() { end(SIGKILL); }

    /** A program of this build: code for another processor comes with its emulator. */
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

    /** Waits for a line of its output that begins with a text. @return the rest; null if none came
     */
    QString lineWith(const QString &start, int nth = 0) const
    {
        for (int i = 0; m_isStarted && i < patience; ++i) {
            QStringList found;
            for (const QString &line : out().split('\n', Qt::SkipEmptyParts)) {
                if (line.startsWith(start))
                    found.append(line.mid(start.size()));
            }
            if (found.size() > nth)
                return found[nth] + QLatin1String("");
            QThread::msleep(stepMs);
        }
        return {};
    }

    int pid() const { return content("pid").toInt(); }

    /** Sends it a signal, while it runs. */
    void signal(int number) const
    {
        const int process = pid();
        if (process > 0 && content("code").isEmpty())
            ::kill(process, number);
    }
    /** Ends it with a signal. @return its exit code, -1 when it does not end */
    int end(int number = SIGTERM)
    {
        signal(number);
        return exitCode();
    }
    int exitCode() const
    {
        for (int i = 0; m_isStarted && i < patience; ++i) {
            const QString code = content("code");
            if (code.endsWith('\n'))
                return code.toInt();
            QThread::msleep(stepMs);
        }
        return -1;
    }

private:
    static constexpr int stepMs = 10;
    static constexpr int patience = 30000 / stepMs;

    QString content(const char *name) const
    {
        QFile file(m_folder.filePath(QLatin1String(name)));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    QTemporaryDir m_folder;
    bool m_isStarted = false;
};
