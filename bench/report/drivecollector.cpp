#include "report/drivecollector.h"

#include "pages.h"
#include "panels/callwords.h"
#include "panels/journaltexts.h"
#include "report/maincurves.h"
#include "report/picturetrail.h"
#include "session/rig.h"
#include "session/warnings.h"

#include <QJsonObject>

using Event = DriveReport::Event;
using Facts = QVector<DriveReport::Fact>;

static constexpr int mostEvents = 500;

static Facts factsOf(const QJsonObject &summary)
{
    static constexpr struct
    {
        const char *name;
        const char *key;
    } counts[] = {{"Signals", "signalsTotal"},
                  {"Calls", "callsTotal"},
                  {"Beeps", "beeps"},
                  {"Frames painted", "framesPainted"},
                  {"Ignored input", "droppedInput"}};
    Facts facts = {{QStringLiteral("Drive time"),
                    momentText(qRound64(summary.value("driveSeconds").toDouble() * 1000), 0.1)}};
    for (const auto &[name, key] : counts)
        facts.append(
            {QLatin1String(name), QString::number(summary.value(QLatin1String(key)).toInt())});
    return facts;
}

/** The faults that are on or have occurred, and how often. */
static Facts faultsOf(const module::Faults &faults)
{
    using module::Faults;
    Facts facts;
    const QJsonObject counts = faults.statistics();
    for (int kind = 0; kind < Faults::KindCount; ++kind) {
        const QString name = QLatin1String(Faults::nameOf(Faults::Kind(kind)));
        if (!counts.contains(name))
            continue;
        facts.append({QStringLiteral("%1:%2 (%3)")
                          .arg(name)
                          .arg(faults.value(Faults::Kind(kind)))
                          .arg(QLatin1String(Faults::meaningOf(Faults::Kind(kind)))),
                      QStringLiteral("%1 times").arg(counts.value(name).toInt())});
    }
    return facts;
}

/** Appends it, unless it only repeats the one before. @return whether there was room */
static bool append(QVector<Event> *events, const Event &event)
{
    if (!events->isEmpty() && events->constLast().text == event.text &&
        events->constLast().detail == event.detail) {
        ++events->last().count;
        return true;
    }
    if (events->size() == mostEvents)
        return false;
    events->append(event);
    return true;
}

static Event callEvent(const Journal *journal, const Journal::Entry &entry)
{
    const QString text = entryText(journal, entry);
    const QString words = meaningOfCall(journal->nameOf(entry), entry.arguments);
    return {entry.ms, words.isEmpty() ? text : words, text};
}

static Event actionEvent(const Journal *journal, const Journal::Entry &entry)
{
    static constexpr const char *kinds[Journal::KindCount] = {"signal", "action", "call",
                                                              "page",   "sound",  "mark"};
    return {entry.ms,
            entry.kind == Journal::Sound ? journal->nameOf(entry) : entryText(journal, entry),
            QLatin1String(kinds[entry.kind])};
}

static void addEvents(DriveReport *report, const Journal *journal)
{
    for (const Journal::Entry &entry : journal->entries()) {
        if (entry.kind == Journal::Call)
            report->callsLeftOut += int(!append(&report->calls, callEvent(journal, entry)));
        else if (entry.kind != Journal::Signal)
            report->actionsLeftOut += int(!append(&report->actions, actionEvent(journal, entry)));
    }
}

/** Those of the present drive, and those from before the first one. */
static void addWarnings(DriveReport *report)
{
    const Warnings *warnings = Warnings::instance();
    if (!warnings)
        return;
    report->warningCount = warnings->notKept();
    for (const Warnings::Entry &entry : warnings->entries()) {
        if (entry.drive >= 0 && entry.drive != warnings->drive())
            continue;
        report->warningCount += entry.count;
        const QString page = entry.first.page < 0 ? QString() : pageText(entry.first.page);
        report->warnings.append({qMax<qint64>(0, entry.first.ms), entry.text, page, entry.count});
    }
}

DriveReport reportOn(Rig *rig, const PictureTrail &trail)
{
    const Session *session = rig->session();
    const module::Drive *drive = rig->session()->drive();
    DriveReport report;
    report.title = drive->source()->title();
    report.about = madeBy();
    report.facts = factsOf(session->summary(rig->unit()->screen()->framesPainted()));
    report.findings = drive->source()->findings();
    report.charts = mainCurves(session);
    report.pictures = trail.pictures();
    report.picturesLeftOut = trail.dropped();
    report.faults = faultsOf(drive->faults());
    addWarnings(&report);
    addEvents(&report, session->journal());
    return report;
}
