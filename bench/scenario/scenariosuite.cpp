#include "scenario/scenariosuite.h"

#include "options.h"
#include "outputfile.h"
#include "report/scenarioreport.h"
#include "runtimefolder.h"
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
    case ChildProcess::Interrupted:
        return QStringLiteral("expected an end of its own, it was interrupted");
    case ChildProcess::Crashed:
        return QStringLiteral("expected to go on, it crashed: %1").arg(child.endInWords());
    case ChildProcess::Exited:
        break;
    }
    return child.hasSucceeded() && !child.results().isEmpty()
               ? QString()
               : QStringLiteral("expected an orderly end, got %1").arg(child.endInWords());
}

using Play = std::function<ScenarioResult(const Scenario &)>;

static ScenarioResult playInProcess(const Scenario &scenario, const Play &play)
{
    // What the plugin keeps goes to a folder of its own, never to the user's.
    const QTemporaryDir scratch(temporaryPlace() + QStringLiteral("/norda-bench-XXXXXX"));
    if (!scratch.isValid()) {
        ScenarioResult result;
        result.unusable = QStringLiteral("%1: expected a place for a temporary folder: %2")
                              .arg(temporaryPlace(), scratch.errorString());
        return result;
    }
    qputenv("NORDA_HOST_ROOT", scratch.path().toLocal8Bit());
    const ChildProcess child = ChildProcess::run(
        [&](QIODevice *results) {
            results->write(QJsonDocument(play(scenario).toJson()).toJson(QJsonDocument::Compact));
        },
        longestMs);
    auto result = ScenarioResult::fromJson(QJsonDocument::fromJson(child.results()).object());
    const QString failure = failureOf(child);
    if (child.end() == ChildProcess::Interrupted)
        result.unusable = QStringLiteral("%1: %2").arg(scenario.file, failure);
    else if (!failure.isEmpty())
        result.failures.append(QStringLiteral("%1: %2").arg(scenario.file, failure));
    return result;
}

/** Up to the first one that cannot be played. */
static QVector<ScenarioResult> playAll(const QVector<Scenario> &scenarios, const Play &play,
                                       QString *error)
{
    QVector<ScenarioResult> results;
    for (const Scenario &scenario : scenarios) {
        ScenarioResult result = playInProcess(scenario, play);
        result.file = scenario.file;
        result.title = scenario.title;
        *error = result.unusable;
        if (!error->isEmpty())
            result.failures.append(*error);
        results.append(result);
        if (!error->isEmpty())
            break;
        printResult(result);
    }
    return results;
}

/** A scenario and its drive are read: nothing that is written replaces them. */
static output::InputFiles inputsOf(const Options &options, const QVector<Scenario> &scenarios)
{
    output::InputFiles inputs = options.setup.inputs;
    for (const Scenario &scenario : scenarios) {
        inputs.add(scenario.file);
        inputs.add(scenario.setup.source);
    }
    return inputs;
}

SuiteOutcome playScenarios(const Options &options, const Play &play, QString *error)
{
    QVector<Scenario> scenarios;
    if (!readAll(options.scripts, &scenarios, error))
        return SuiteOutcome::Unusable;
    const output::InputFiles inputs = inputsOf(options, scenarios);
    for (Scenario &scenario : scenarios) {
        scenario.setup.inputs = inputs;
        scenario.setup.hasModuleProcess = options.setup.hasModuleProcess;
        scenario.setup.record = options.setup.record;
        scenario.setup.recordLimit = options.setup.recordLimit;
        scenario.setup.moduleRecord = options.setup.moduleRecord;
    }
    if (!options.setup.record.isEmpty() && scenarios.size() > 1)
        *error =
            QStringLiteral("--record: expected with one scenario, got %1").arg(scenarios.size());
    for (const QString &file : {options.junit, options.reportFile()}) {
        if (error->isEmpty() && !file.isEmpty())
            *error = output::refusal(file, inputs);
    }
    if (!error->isEmpty())
        return SuiteOutcome::Unusable;
    // What was played before a scenario that cannot be is reported, too.
    QString unusable;
    const QVector<ScenarioResult> results = playAll(scenarios, play, &unusable);
    const int failed = failedIn(results);
    std::printf("%d passed, %d failed\n", results.size() - failed, failed);
    if (!options.junit.isEmpty() && !writeJUnit(options.junit, results, inputs, error))
        return SuiteOutcome::Unusable;
    if (!options.report.isEmpty() &&
        !output::writeResult(options.reportFile(), pageOf(results), inputs, error))
        return SuiteOutcome::Unusable;
    *error = unusable;
    if (!unusable.isEmpty())
        return SuiteOutcome::Unusable;
    return failed > 0 ? SuiteOutcome::Failed : SuiteOutcome::Passed;
}
