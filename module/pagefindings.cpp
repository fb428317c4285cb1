#include "pagefindings.h"

#include "quantities.h"

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

static QString pageFinding(const PageName &page, const QVector<bool> &present)
{
    QStringList has;
    QStringList lacks;
    const QVector<Group> groups = groupsOf(page.page, present);
    for (const Group &group : groups)
        (group.present > 0 ? has : lacks).append(group.text());
    QStringList parts;
    if (has.isEmpty())
        return QStringLiteral("%1: nothing").arg(QLatin1String(page.name));
    parts.append(has.join(QStringLiteral(", ")));
    if (!lacks.isEmpty())
        parts.append(QStringLiteral("not ") + lacks.join(QStringLiteral(", ")));
    return QStringLiteral("%1: %2").arg(QLatin1String(page.name), parts.join(QStringLiteral("; ")));
}

QStringList pageFindings(const QVector<bool> &present)
{
    QStringList lines;
    for (const PageName &page : pageNames)
        lines.append(pageFinding(page, present));
    return lines;
}

QString pageOfPath(const QString &path)
{
    const Quantity quantity = quantityOf(path);
    for (const PageName &page : pageNames) {
        if (quantity != Quantity::Count && quantityInfo(quantity).page == page.page)
            return QLatin1String(page.name);
    }
    return {};
}

} // namespace module
