#include "panels/journaltexts.h"

#include "pages.h"
#include "panels/panelparts.h"
#include "scenario/scenarioline.h"
#include "tools/themecolors.h"
#include "values.h"

#include <QCoreApplication>

QColor kindColor(Journal::Kind kind, const QPalette &palette)
{
    static constexpr QColor theme::Colors::*colors[Journal::KindCount] = {
        &theme::Colors::accent,    &theme::Colors::amber,  &theme::Colors::green,
        &theme::Colors::secondary, &theme::Colors::violet, &theme::Colors::red,
    };
    return theme::colors(palette).*colors[kind];
}

QString entryText(const Journal *journal, const Journal::Entry &entry)
{
    const QString &name = journal->nameOf(entry);
    if (entry.kind == Journal::Action)
        return scenarioLine(name, entry.arguments);
    if (entry.kind == Journal::Page)
        return pageText(entry.arguments.value(0).toInt());
    if (entry.kind == Journal::Mark)
        return name;
    const QString shown = name.section(QStringLiteral("::"), -1);
    return (shown + QLatin1Char(' ') + module::argumentsText(entry.arguments)).trimmed();
}

QStringList entryLines(const Journal *journal, Journal::Kind kind, qint64 fromMs, qint64 toMs)
{
    static constexpr int mostShown = 12;
    static constexpr int longest = 120;
    const int first = journal->lowerBound(kind, fromMs);
    const int last = journal->lowerBound(kind, toMs);
    QStringList lines;
    for (int i = first; i < qMin(last, first + mostShown); ++i) {
        const Journal::Entry &entry = journal->entries()[journal->ofKind(kind)[i]];
        lines.append(secondsText(entry.ms) + QStringLiteral("  ") +
                     entryText(journal, entry).left(longest));
    }
    if (last - first > mostShown)
        lines.append(QCoreApplication::translate("TimelineView", "and %1 more")
                         .arg(last - first - mostShown));
    return lines;
}
