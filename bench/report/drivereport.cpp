#include "report/drivereport.h"

using Events = QVector<DriveReport::Event>;

static void writeBadges(Html *html, const DriveReport &report)
{
    html->begin("ul", {{"class", "badges"}});
    const bool hasWarned = report.warningCount > 0;
    writeBadge(html, "li", hasWarned ? Badge::Bad : Badge::Good,
               hasWarned ? QStringLiteral("Warnings: %1").arg(report.warningCount)
                         : QStringLiteral("No warnings"));
    writeBadge(html, "li", Badge::Plain,
               report.faults.isEmpty() ? QStringLiteral("No faults injected")
                                       : QStringLiteral("Faults injected"));
    html->end();
}

static void writeFacts(Html *html, const QVector<DriveReport::Fact> &facts, const char *classes)
{
    html->begin("dl", {{"class", QLatin1String(classes)}});
    for (const DriveReport::Fact &fact : facts)
        html->begin("div").element("dt", fact.name).element("dd", fact.value).end();
    html->end();
}

static void writeSummary(Html *html, const DriveReport &report)
{
    html->element("h1", report.title);
    html->element("p", report.about, {{"class", "secondary"}});
    writeBadges(html, report);
    writeFacts(html, report.facts, "facts");
    if (report.findings.isEmpty())
        return;
    html->begin("div", {{"class", "panel"}});
    for (const QString &line : report.findings)
        html->element("p", line);
    html->end();
}

static void writeCharts(Html *html, const QVector<Chart> &charts)
{
    if (charts.isEmpty())
        return;
    html->element("h2", QStringLiteral("Curves"), {{"id", "curves"}});
    html->begin("div", {{"class", "charts"}});
    for (const Chart &chart : charts)
        writeChart(html, chart);
    html->end();
}

static void writeLeftOut(Html *html, const char *form, int count)
{
    if (count > 0)
        html->element("p", QString::fromLatin1(form).arg(count), {{"class", "secondary"}});
}

static void writePictures(Html *html, const DriveReport &report)
{
    html->element("h2", QStringLiteral("Along the way"));
    writeLeftOut(html, "%1 earlier pictures are left out.", report.picturesLeftOut);
    html->begin("div", {{"class", "shots"}});
    for (const ReportPicture &picture : report.pictures)
        writePicture(html, picture);
    html->end();
}

static void writeRow(Html *html, const DriveReport::Event &event)
{
    html->begin("tr").begin("td", {{"class", "number"}});
    writeMoment(html, event.ms);
    html->end().begin("td").text(event.text);
    if (event.count > 1)
        html->text(QStringLiteral(" (%1 times)").arg(event.count));
    html->end().begin("td", {{"class", "operation"}}).element("code", event.detail).end().end();
}

struct Heading
{
    const char *title;
    const char *what;
    const char *detail;
    const char *leftOut;
};

static void writeTable(Html *html, const Heading &heading, const Events &events)
{
    html->begin("table").begin("tr");
    html->element("th", QStringLiteral("Time"), {{"class", "number"}});
    html->element("th", QLatin1String(heading.what));
    html->element("th", QLatin1String(heading.detail), {{"class", "operation"}}).end();
    for (const DriveReport::Event &event : events)
        writeRow(html, event);
    html->end();
}

/** A long table is closed, so that a reader sees what else there is. */
static void writeEvents(Html *html, const Heading &heading, const Events &events, int leftOut = 0)
{
    static constexpr int mostOpen = 40;
    if (events.isEmpty())
        return;
    beginFold(html, "h2", QLatin1String(heading.title), Badge::Plain,
              QString::number(events.size() + leftOut), events.size() <= mostOpen);
    writeTable(html, heading, events);
    writeLeftOut(html, heading.leftOut, leftOut);
    html->end();
}

static void writeFaults(Html *html, const QVector<DriveReport::Fact> &faults)
{
    if (faults.isEmpty())
        return;
    html->element("h2", QStringLiteral("Injected faults"));
    writeFacts(html, faults, "facts wide");
}

QByteArray pageOf(const DriveReport &report)
{
    return reportPage(report.title, [&report](Html *html) {
        writeSummary(html, report);
        writeEvents(html, {"Warnings", "Warning", "Page", ""}, report.warnings);
        writeFaults(html, report.faults);
        writeCharts(html, report.charts);
        writePictures(html, report);
        writeEvents(html, {"Actions, pages and sounds", "What", "Kind", "and %1 more"},
                    report.actions, report.actionsLeftOut);
        writeEvents(html, {"Calls to the host", "What", "Operation", "and %1 more"}, report.calls,
                    report.callsLeftOut);
    });
}
