#include "costtable.h"

#include <QRegularExpression>

#include <algorithm>

static const QByteArray packageMark = "# Counted with ";
static const QByteArray head = "# What each thing takes: ./test --costs compares, ./test "
                               "--accept-costs takes new counts over.\n";
static const QByteArray columns = "#\n# instructions allocations  cost\n";

CostTable CostTable::read(const QByteArray &text, QString *error)
{
    static const QRegularExpression row(QStringLiteral("^ *(\\d+) +(\\d+) +(\\S.*)$"));
    CostTable table;
    int number = 0;
    for (const QByteArray &line : text.split('\n')) {
        ++number;
        if (line.startsWith(packageMark))
            table.packages.append(line.mid(packageMark.size()));
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        const QRegularExpressionMatch match = row.match(QString::fromUtf8(line));
        if (!match.hasMatch()) {
            *error = QStringLiteral("line %1: expected instructions, allocations and a name, "
                                    "found '%2'")
                         .arg(number)
                         .arg(QString::fromUtf8(line));
            return {};
        }
        table.costs.append({match.captured(3).toUtf8(), match.captured(1).toLongLong(),
                            match.captured(2).toLongLong()});
    }
    return table;
}

QByteArray CostTable::text() const
{
    QByteArray text = head;
    for (const QByteArray &package : packages)
        text += packageMark + package + '\n';
    text += columns;
    for (const Cost &cost : costs)
        text += QByteArray::number(cost.instructions).rightJustified(14) +
                QByteArray::number(cost.allocations).rightJustified(12) + "  " + cost.name + '\n';
    return text;
}

const Cost *CostTable::find(const QByteArray &name) const
{
    const auto found = std::find_if(costs.begin(), costs.end(),
                                    [&](const Cost &cost) { return cost.name == name; });
    return found == costs.end() ? nullptr : &*found;
}

double costMargin(const CostTable &was, const CostTable &is)
{
    return was.packages == is.packages ? 0.03 : 0.10;
}

static QString fault(const QByteArray &name, const char *what, qint64 was, qint64 is)
{
    const QString line = QStringLiteral("%1: %2 %3, was %4")
                             .arg(QString::fromUtf8(name))
                             .arg(is)
                             .arg(QLatin1String(what))
                             .arg(was);
    if (was == 0)
        return line;
    return line + QStringLiteral(" (+%1 %)").arg(100.0 * double(is - was) / double(was), 0, 'f', 1);
}

static void compare(const Cost &was, const Cost &is, double margin, CostChanges *changes)
{
    const auto isAbove = [margin](qint64 was, qint64 is) {
        return double(is) > double(was) * (1 + margin);
    };
    if (isAbove(was.instructions, is.instructions))
        changes->faults += fault(is.name, "instructions", was.instructions, is.instructions);
    if (isAbove(was.allocations, is.allocations))
        changes->faults += fault(is.name, "allocations", was.allocations, is.allocations);
    changes->lower +=
        isAbove(is.instructions, was.instructions) || isAbove(is.allocations, was.allocations);
}

CostChanges compareCosts(const CostTable &was, const CostTable &is)
{
    CostChanges changes;
    const double margin = costMargin(was, is);
    for (const Cost &cost : is.costs) {
        if (const Cost *accepted = was.find(cost.name))
            compare(*accepted, cost, margin, &changes);
        else
            changes.faults += QStringLiteral("%1: not in the table").arg(QString(cost.name));
    }
    for (const Cost &cost : was.costs) {
        if (!is.find(cost.name))
            changes.faults +=
                QStringLiteral("%1: in the table, not measured").arg(QString(cost.name));
    }
    return changes;
}
