#include "pagefindings.h"

#include <algorithm>

namespace module {

struct PageName
{
    ShownOn page;
    const char *name;
};

static constexpr PageName pageNames[] = {
    {ShownOn::Gauges, "Gauges"},
    {ShownOn::Vehicle, "Vehicle"},
    {ShownOn::Climate, "Climate"},
    {ShownOn::Parking, "Parking"},
};

/** A group of a page, and how many of its quantities a car has. */
struct Group
{
    QString name;
    int present = 0;
    int count = 0;

    QString text() const
    {
        const bool isPart = present > 0 && present < count;
        return isPart ? QStringLiteral("%1 (%2 of %3)").arg(name).arg(present).arg(count) : name;
    }
};

static QVector<Group> groupsOf(ShownOn page, const QVector<bool> &present)
{
    QVector<Group> groups;
    for (int i = 0; i < int(Quantity::Count); ++i) {
        const QuantityInfo &info = quantityInfo(Quantity(i));
        if (info.page != page)
            continue;
        const QString name = QLatin1String(info.group);
        auto group = std::find_if(groups.begin(), groups.end(),
                                  [&name](const Group &other) { return other.name == name; });
        if (group == groups.end())
            group = groups.insert(groups.end(), {name, 0, 0});
        ++group->count;
        group->present += present.value(i);
    }
    return groups;
}

QVector<Findings> groupsByPage(const QVector<bool> &present)
{
    QVector<Findings> found;
    for (const PageName &page : pageNames) {
        Findings findings = {QLatin1String(page.name), {}, {}};
        const QVector<Group> groups = groupsOf(page.page, present);
        for (const Group &group : groups)
            (group.present > 0 ? findings.present : findings.missing).append(group.text());
        found.append(findings);
    }
    return found;
}

static QString pageFinding(const Findings &page)
{
    if (page.present.isEmpty())
        return QStringLiteral("%1: nothing").arg(page.heading);
    QStringList parts = {page.present.join(QStringLiteral(", "))};
    if (!page.missing.isEmpty())
        parts.append(QStringLiteral("not ") + page.missing.join(QStringLiteral(", ")));
    return QStringLiteral("%1: %2").arg(page.heading, parts.join(QStringLiteral("; ")));
}

QStringList pageFindings(const QVector<bool> &present)
{
    QStringList lines;
    const QVector<Findings> found = groupsByPage(present);
    for (const Findings &page : found)
        lines.append(pageFinding(page));
    return lines;
}

QString pageName(ShownOn shownOn)
{
    for (const PageName &page : pageNames) {
        if (page.page == shownOn)
            return QLatin1String(page.name);
    }
    return {};
}

QString pageOfPath(const QString &path)
{
    const Quantity quantity = quantityOf(path);
    return quantity == Quantity::Count ? QString() : pageName(quantityInfo(quantity).page);
}

} // namespace module
