#include "report/scenarioreport.h"

#include "report/reportpage.h"
#include "scenario/suitereport.h"

#include <QFileInfo>

static void writeSummary(Html *html, const QVector<ScenarioResult> &results)
{
    const int failed = failedIn(results);
    double seconds = 0;
    for (const ScenarioResult &result : results)
        seconds += result.seconds;
    html->element("h1", QStringLiteral("Scenarios"));
    html->element("p", madeBy(), {{"class", "secondary"}});
    html->begin("ul", {{"class", "badges"}});
    const int passed = results.size() - failed;
    writeBadge(html, "li", passed > 0 ? Badge::Good : Badge::Plain,
               QStringLiteral("%1 passed").arg(passed));
    writeBadge(html, "li", failed > 0 ? Badge::Bad : Badge::Plain,
               QStringLiteral("%1 failed").arg(failed));
    writeBadge(html, "li", Badge::Plain, QStringLiteral("%1 s").arg(seconds, 0, 'f', 1));
    html->end();
}

static QString outcomeOf(const StepResult &step)
{
    if (!step.failure.isEmpty())
        return step.isExpectation ? step.seen : step.failure;
    if (!step.isExpectation)
        return {};
    return step.seen.isEmpty() ? QStringLiteral("as expected")
                               : QStringLiteral("as expected: %1").arg(step.seen);
}

static void writePictures(Html *html, const StepResult &step)
{
    if (step.after.isEmpty())
        return;
    html->begin("tr", {{"class", "pictures"}}).begin("td", {{"colspan", "4"}});
    html->begin("div", {{"class", "pair"}});
    if (!step.before.isEmpty())
        writePicture(html, {step.before, QStringLiteral("Before the last action")});
    writePicture(html, {step.after, QStringLiteral("At the failure in line %1").arg(step.line)});
    html->end().end().end();
}

static void writeStep(Html *html, const StepResult &step)
{
    const bool hasFailed = !step.failure.isEmpty();
    html->begin("tr", {{"class", hasFailed ? "failed" : ""}});
    html->element("td", QString::number(step.line), {{"class", "number"}});
    html->element("td", momentText(step.ms), {{"class", "number"}});
    html->begin("td").element("code", step.text).end();
    html->begin("td", {{"class", hasFailed ? "" : "secondary"}});
    if (hasFailed)
        writeBadge(html, "span", Badge::Bad, QStringLiteral("failed"));
    html->text((hasFailed ? QStringLiteral(" ") : QString()) + outcomeOf(step)).end().end();
    writePictures(html, step);
}

static void writeSteps(Html *html, const QVector<StepResult> &steps)
{
    html->begin("table", {{"class", "steps"}}).begin("tr");
    html->element("th", QStringLiteral("Line"), {{"class", "number"}});
    html->element("th", QStringLiteral("Time"), {{"class", "number"}});
    html->element("th", QStringLiteral("Step")).element("th", QStringLiteral("Seen")).end();
    for (const StepResult &step : steps)
        writeStep(html, step);
    html->end();
}

/** One that failed is open. */
static void writeScenario(Html *html, const ScenarioResult &result)
{
    const bool hasFailed = !result.failures.isEmpty();
    beginFold(html, "h3", result.title, hasFailed ? Badge::Bad : Badge::Good,
              hasFailed ? QStringLiteral("failed") : QStringLiteral("passed"), hasFailed);
    const QString name = QFileInfo(result.file).fileName(); // the page may be read elsewhere
    html->element("p",
                  QStringLiteral("%1, %2 expectations, %3 s")
                      .arg(name)
                      .arg(result.expectations)
                      .arg(result.seconds, 0, 'f', 1),
                  {{"class", "secondary"}});
    for (const QString &failure : result.failures)
        html->begin("p").element("code", QString(failure).replace(result.file, name)).end();
    if (!result.steps.isEmpty())
        writeSteps(html, result.steps);
    html->end();
}

QByteArray pageOf(const QVector<ScenarioResult> &results)
{
    return reportPage(
        QStringLiteral("Scenarios: %1 of %2 failed").arg(failedIn(results)).arg(results.size()),
        [&results](Html *html) {
            writeSummary(html, results);
            for (const ScenarioResult &result : results)
                writeScenario(html, result);
        });
}
