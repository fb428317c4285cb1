#include "scenario/scenariosuite.h"

#include "options.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QXmlStreamWriter>

#include <csignal>
#include <cstdio>
#include <cstring>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

static constexpr int longestSeconds = 300;

// ---- Which scenarios ----------------------------------------------------------------------------

/** A folder stands for all scenarios in it, in the order of their names. */
static QStringList filesOf(const QStringList &scripts, QString *error)
{
    QStringList files;
    for (const QString &script : scripts) {
        if (!QFileInfo(script).isDir()) {
            files.append(script);
            continue;
        }
        const QDir folder(script);
        const QStringList found =
            folder.entryList({QStringLiteral("*.scenario")}, QDir::Files, QDir::Name);
        if (found.isEmpty())
            *error =
                QStringLiteral("%1: expected a folder with scenarios, found no *.scenario in it")
                    .arg(script);
        for (const QString &name : found)
            files.append(folder.filePath(name));
    }
    return files;
}

static bool readAll(const QStringList &scripts, QVector<Scenario> *scenarios, QString *error)
{
    const QStringList files = filesOf(scripts, error);
    for (const QString &file : files) {
        Scenario scenario;
        if (!error->isEmpty() || !scenario.read(file, error))
            return false;
        scenarios->append(scenario);
    }
    return error->isEmpty();
}

// ---- A process for each -------------------------------------------------------------------------

[[noreturn]] static void playAndTell(const Scenario &scenario, int pipe,
                                     const std::function<ScenarioResult(const Scenario &)> &play)
{
    QFile out;
    if (out.open(pipe, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle))
        out.write(QJsonDocument(play(scenario).toJson()).toJson(QJsonDocument::Compact));
    out.close();
    std::exit(0);
}

/** What a process writes until it ends, or until it has taken too long. */
static QByteArray readUntilEnd(int pipe, pid_t process)
{
    QByteArray text;
    char buffer[4096];
    pollfd ready = {pipe, POLLIN, 0};
    while (::poll(&ready, 1, longestSeconds * 1000) > 0) {
        const ssize_t count = ::read(pipe, buffer, sizeof buffer);
        if (count <= 0)
            return text;
        text.append(buffer, int(count));
    }
    ::kill(process, SIGKILL);
    return text;
}

static ScenarioResult playInProcess(const Scenario &scenario,
                                    const std::function<ScenarioResult(const Scenario &)> &play)
{
    // What the plugin keeps goes to a folder of its own, and with it.
    const QTemporaryDir scratch;
    qputenv("NORDA_HOST_ROOT", scratch.path().toLocal8Bit());
    int ends[2] = {-1, -1};
    std::fflush(nullptr);
    const pid_t child = ::pipe(ends) == 0 ? ::fork() : -1;
    if (child == 0) {
        ::close(ends[0]);
        playAndTell(scenario, ends[1], play);
    }
    ::close(ends[1]);
    const QByteArray told = child > 0 ? readUntilEnd(ends[0], child) : QByteArray();
    ::close(ends[0]);
    int status = 0;
    if (child > 0)
        ::waitpid(child, &status, 0);
    ScenarioResult result = ScenarioResult::fromJson(QJsonDocument::fromJson(told).object());
    result.file = scenario.file;
    result.title = scenario.title;
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL)
        result.failures.append(QStringLiteral("%1: expected an end within %2 s, it was stopped")
                                   .arg(scenario.file)
                                   .arg(longestSeconds));
    else if (WIFSIGNALED(status))
        result.failures.append(
            QStringLiteral("%1: expected to go on, it crashed: %2")
                .arg(scenario.file, QString::fromLatin1(::strsignal(WTERMSIG(status)))));
    else if (child < 0 || told.isEmpty() || WEXITSTATUS(status) != 0)
        result.failures.append(QStringLiteral("%1: expected an orderly end, got exit code %2")
                                   .arg(scenario.file)
                                   .arg(WEXITSTATUS(status)));
    return result;
}

// ---- The report ---------------------------------------------------------------------------------

static void print(const ScenarioResult &result)
{
    if (result.failures.isEmpty())
        std::printf("pass  %s: %s (%d expectations, %.1f s)\n",
                    qPrintable(QFileInfo(result.file).fileName()), qPrintable(result.title),
                    result.expectations, result.seconds);
    else
        std::printf("FAIL  %s: %s\n", qPrintable(QFileInfo(result.file).fileName()),
                    qPrintable(result.title));
    for (const QString &failure : result.failures)
        std::printf("      %s\n", qPrintable(failure));
    for (const QString &picture : result.pictures)
        std::printf("      picture: %s\n", qPrintable(picture));
    std::fflush(stdout);
}

static bool writeJUnit(const QString &path, const QVector<ScenarioResult> &results, int failed,
                       QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        *error = QStringLiteral("%1: expected a file that can be written: %2")
                     .arg(path, file.errorString());
        return false;
    }
    QXmlStreamWriter xml(&file);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("testsuite"));
    xml.writeAttribute(QStringLiteral("name"), QStringLiteral("norda-bench"));
    xml.writeAttribute(QStringLiteral("tests"), QString::number(results.size()));
    xml.writeAttribute(QStringLiteral("failures"), QString::number(failed));
    for (const ScenarioResult &result : results) {
        xml.writeStartElement(QStringLiteral("testcase"));
        xml.writeAttribute(QStringLiteral("classname"), QFileInfo(result.file).completeBaseName());
        xml.writeAttribute(QStringLiteral("name"), result.title);
        xml.writeAttribute(QStringLiteral("time"), QString::number(result.seconds, 'f', 3));
        for (const QString &failure : result.failures) {
            xml.writeStartElement(QStringLiteral("failure"));
            xml.writeAttribute(QStringLiteral("message"), failure);
            xml.writeEndElement();
        }
        xml.writeEndElement();
    }
    xml.writeEndDocument();
    return true;
}

SuiteOutcome playScenarios(const Options &options,
                           const std::function<ScenarioResult(const Scenario &)> &play,
                           QString *error)
{
    QVector<Scenario> scenarios;
    if (!readAll(options.scripts, &scenarios, error))
        return SuiteOutcome::Unusable;
    QVector<ScenarioResult> results;
    int failed = 0;
    for (const Scenario &scenario : qAsConst(scenarios)) {
        results.append(playInProcess(scenario, play));
        failed += !results.constLast().failures.isEmpty();
        print(results.constLast());
    }
    std::printf("%d passed, %d failed\n", results.size() - failed, failed);
    if (!options.junit.isEmpty() && !writeJUnit(options.junit, results, failed, error))
        return SuiteOutcome::Unusable;
    return failed > 0 ? SuiteOutcome::Failed : SuiteOutcome::Passed;
}
