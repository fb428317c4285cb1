#include "scenario/scenariosuite.h"

#include "options.h"
#include "scenario/suitereport.h"
#include "tools/childprocess.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <cstdio>

static constexpr int longestMs = 300'000;

/** A folder gives all scenarios in it, in the order of their names. */
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

SuiteOutcome playScenarios(const Options &options,
                           const std::function<ScenarioResult(const Scenario &)> &play,
                           QString *error)
{
    QVector<Scenario> scenarios;
    if (!readAll(options.scripts, &scenarios, error))
        return SuiteOutcome::Unusable;
    QVector<ScenarioResult> results;
    for (const Scenario &scenario : qAsConst(scenarios)) {
        results.append(playInProcess(scenario, play));
        printResult(results.constLast());
    }
    const int failed = failedIn(results);
    std::printf("%d passed, %d failed\n", results.size() - failed, failed);
    if (!options.junit.isEmpty() && !writeJUnit(options.junit, results, error))
        return SuiteOutcome::Unusable;
    return failed > 0 ? SuiteOutcome::Failed : SuiteOutcome::Passed;
}
