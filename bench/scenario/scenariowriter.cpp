#include "scenario/scenariowriter.h"

#include "scenario/scenario.h"
#include "scenario/scenarioline.h"
#include "session/journal.h"
#include "session/setup.h"

static constexpr qint64 consequenceMs = 300; // a command so soon after an action is its consequence

static const QString commands = QStringLiteral("norda::VtqAdaptor::");

/** Actions and their consequences as the lines of a scenario. */
class ScenarioWriter
{
public:
    explicit ScenarioWriter(const Journal *journal) : m_journal(journal) {}

    QStringList lines()
    {
        const QVector<Journal::Entry> &entries = m_journal->entries();
        for (int i = 0; i < entries.size(); ++i) {
            if (entries[i].kind == Journal::Action)
                i = writeAction(i);
        }
        return m_lines;
    }

private:
    void add(qint64 ms, const QString &line)
    {
        // Only a changed time is written.
        m_lines.append(ms == m_lastMs ? QString(9, QLatin1Char(' ')) + line : timedLine(ms, line));
        m_lastMs = ms;
    }

    /** @return the last entry of the action: a press ends with its release */
    int writeAction(int index)
    {
        const QVector<Journal::Entry> &entries = m_journal->entries();
        int end = index;
        QString word = m_journal->nameOf(entries[index]);
        const int release = releaseOf(index);
        if (release > 0) {
            word = QStringLiteral("touch");
            end = release;
        }
        add(entries[index].ms, scenarioLine(word, entries[index].arguments));
        writeConsequences(index, end);
        return end;
    }

    /** The release that makes a press a tap, with no other action between; 0 for none. */
    int releaseOf(int index) const
    {
        static constexpr qint64 tapMs = 1000;
        const QVector<Journal::Entry> &entries = m_journal->entries();
        if (m_journal->nameOf(entries[index]) != QLatin1String("press"))
            return 0;
        for (int i = index + 1; i < entries.size(); ++i) {
            if (entries[i].kind == Journal::Action) {
                const bool isTap = m_journal->nameOf(entries[i]) == QLatin1String("release") &&
                                   entries[i].ms - entries[index].ms < tapMs;
                return isTap ? i : 0;
            }
        }
        return 0;
    }

    void writeConsequences(int index, int end)
    {
        const QVector<Journal::Entry> &entries = m_journal->entries();
        const qint64 until = entries[end].ms + consequenceMs;
        int page = -1;
        for (int i = index + 1; i < entries.size() && entries[i].ms <= until; ++i) {
            if (i > end && entries[i].kind == Journal::Action)
                break;
            if (entries[i].kind == Journal::Page)
                page = entries[i].arguments.value(0).toInt();
            const QString &name = m_journal->nameOf(entries[i]);
            if (entries[i].kind != Journal::Call || !name.startsWith(commands))
                continue;
            add(m_lastMs,
                QStringLiteral("expect ") +
                    scenarioLine(QStringLiteral("call"),
                                 QVariantList{name.mid(commands.size())} + entries[i].arguments));
        }
        if (page >= 0)
            add(m_lastMs, QStringLiteral("expect page %1").arg(page));
    }

    const Journal *m_journal;
    QStringList m_lines;
    qint64 m_lastMs = -1;
};

QString scenarioOf(const Journal *journal, const Setup &setup, const QString &title)
{
    QStringList lines = {scenarioLine(QStringLiteral("scenario"), {title}),
                         scenarioLine(QStringLiteral("source"), {setup.source})};
    if (!setup.car.dbc.isEmpty())
        lines.append(scenarioLine(QStringLiteral("dbc"), {setup.car.dbc}));
    if (!setup.car.map.isEmpty())
        lines.append(scenarioLine(QStringLiteral("map"), {setup.car.map}));
    if (setup.trim != module::Trim::Full)
        lines.append(scenarioLine(QStringLiteral("trim"), {module::trimName(setup.trim)}));
    if (!setup.language.isEmpty() && setup.language != Scenario::ownSetup().language)
        lines.append(scenarioLine(QStringLiteral("language"), {setup.language}));
    for (const QString &fault : setup.faults.stated())
        lines.append(scenarioLine(QStringLiteral("fault"), {fault}));
    if (setup.faults.seed() != module::Faults().seed())
        lines.append(scenarioLine(QStringLiteral("seed"), {setup.faults.seed()}));
    if (journal->dropped() > 0)
        lines.append(QStringLiteral("# The first %1 events of the session are no longer kept.")
                         .arg(journal->dropped()));
    lines.append(QString());
    if (setup.page != firstPage)
        lines.append(QStringLiteral("0        page %1").arg(setup.page));
    lines += ScenarioWriter(journal).lines();
    lines.append(QStringLiteral("+0       expect page %1").arg([journal, &setup] {
        const QVector<int> &pages = journal->ofKind(Journal::Page);
        return pages.isEmpty() ? setup.page
                               : journal->entries()[pages.constLast()].arguments.value(0).toInt();
    }()));
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}
