#include "scenario/scenariosuite.h"

#include "options.h"
#include "tools/childprocess.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QXmlStreamWriter>

#include <cstdio>

static constexpr int longestMs = 300'000;

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

static QString failureOf(const ChildProcess &child)
{
    switch (child.end()) {
    case ChildProcess::NotStarted:
        return QStringLiteral("expected a process to play in, got none");
    case ChildProcess::TimedOut:
        return QStringLiteral("expected an end within %1 s, it was stopped").arg(longestMs / 1000);
    case ChildProcess::Crashed:
        return QStringLiteral("expected to go on, it crashed: %1").arg(child.endInWords());
    case ChildProcess::Exited:
        break;
    }
    return child.hasSucceeded() && !child.results().isEmpty()
               ? QString()
               : QStringLiteral("expected an orderly end, got %1").arg(child.endInWords());
}

static ScenarioResult playInProcess(const Scenario &scenario,
                                    const std::function<ScenarioResult(const Scenario &)> &play)
{
    // What the plugin keeps goes to a folder of its own, which is removed afterwards.
    const QTemporaryDir scratch;
    qputenv("NORDA_HOST_ROOT", scratch.path().toLocal8Bit());
    const ChildProcess child = ChildProcess::run(
        [&](QIODevice *results) {
            results->write(QJsonDocument(play(scenario).toJson()).toJson(QJsonDocument::Compact));
        },
        longestMs);
    ScenarioResult result =
        ScenarioResult::fromJson(QJsonDocument::fromJson(child.results()).object());
    result.file = scenario.file;
    result.title = scenario.title;
    const QString failure = failureOf(child);
    if (!failure.isEmpty())
        result.failures.append(QStringLiteral("%1: %2").arg(scenario.file, failure));
    return result;
}

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
