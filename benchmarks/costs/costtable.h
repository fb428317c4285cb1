#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

/** What something takes. */
struct Cost
{
    QByteArray name;
    qint64 instructions = 0;
    qint64 allocations = 0;
};

/** Costs, and the packages that they were counted with, each with its version. */
struct CostTable
{
    /** @param error  one line that names the row and what was expected */
    static CostTable read(const QByteArray &text, QString *error);
    QByteArray text() const;
    /** The cost of this name, null when there is none. */
    const Cost *find(const QByteArray &name) const;

    QList<QByteArray> packages;
    QList<Cost> costs;
};

/** How a count differs from what was accepted. */
struct CostChanges
{
    QStringList faults; ///< a line for each count above its margin, each new and each missing cost
    int lower = 0;      ///< costs that are below it by more than the margin
};

/** Counts of the same packages may differ by 3 %, those of others by 10 %. */
double costMargin(const CostTable &was, const CostTable &is);
CostChanges compareCosts(const CostTable &was, const CostTable &is);
