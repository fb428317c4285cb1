#pragma once

#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <cstdlib>
#include <sys/wait.h>

/** What a program printed and how it ended; 124 when it took too long. */
struct ProgramResult
{
    int exitCode;
    QString out;
    QString err;
};

/**
 * Runs a program to its end. Through the shell and not as a QProcess: that one asks the kernel for
 * a kind of child that user-mode emulation does not have, and then waits for, and kills, others.
 */
inline ProgramResult runProgram(const QStringList &command, int timeoutSeconds = 120)
{
    QTemporaryDir scratch;
    const auto quoted = [](QString word) {
        return QLatin1Char('\'') + word.replace(QLatin1Char('\''), QStringLiteral("'\\''")) +
               QLatin1Char('\'');
    };
    QString line = QStringLiteral("timeout %1").arg(timeoutSeconds);
    for (const QString &word : command)
        line += QLatin1Char(' ') + quoted(word);
    line += QStringLiteral(" >%1 2>%2 </dev/null")
                .arg(quoted(scratch.filePath("out")), quoted(scratch.filePath("err")));
    const int status = std::system(line.toLocal8Bit().constData());
    const auto content = [&scratch](const char *name) {
        QFile file(scratch.filePath(QLatin1String(name)));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    };
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, content("out"), content("err")};
}
