#include "panels/callsmodel.h"

#include "panels/callwords.h"
#include "panels/panelparts.h"
#include "values.h"

#include <algorithm>

CallsModel::CallsModel(QObject *parent) : QAbstractTableModel(parent) {}

void CallsModel::setJournal(const Journal *journal)
{
    m_journal = journal;
    // Numbers of entries are stable; only the rows of dropped entries are removed.
    connect(journal, &Journal::shifted, this, &CallsModel::rebuild);
    rebuild();
}

void CallsModel::setFilter(const QString &filter)
{
    m_filter = filter;
    rebuild();
}

void CallsModel::rebuild()
{
    beginResetModel();
    m_rows.clear();
    m_next = m_journal ? m_journal->dropped() : 0;
    endResetModel();
    catchUp();
}

bool CallsModel::isWanted(const Journal::Entry &entry) const
{
    return m_filter.isEmpty() || m_journal->nameOf(entry).contains(m_filter, Qt::CaseInsensitive) ||
           module::argumentsText(entry.arguments).contains(m_filter, Qt::CaseInsensitive) ||
           meaningOfCall(m_journal->nameOf(entry), entry.arguments)
               .contains(m_filter, Qt::CaseInsensitive);
}

void CallsModel::catchUp()
{
    if (!m_journal)
        return;
    QVector<qint64> added;
    const QVector<int> &calls = m_journal->ofKind(Journal::Call);
    auto place = std::lower_bound(calls.cbegin(), calls.cend(), m_next - m_journal->dropped());
    for (; place != calls.cend(); ++place) {
        if (isWanted(m_journal->entries()[*place]))
            added.append(m_journal->dropped() + *place);
    }
    m_next = m_journal->total();
    if (added.isEmpty())
        return;
    beginInsertRows({}, m_rows.size(), m_rows.size() + added.size() - 1);
    m_rows += added;
    endInsertRows();
}

const Journal::Entry *CallsModel::entryAt(int row) const
{
    const qint64 place = m_journal ? m_rows.value(row, -1) - m_journal->dropped() : -1;
    return place < 0 ? nullptr : &m_journal->entries()[int(place)];
}

qint64 CallsModel::timeOf(int row) const
{
    const Journal::Entry *entry = entryAt(row);
    return entry ? entry->ms : 0;
}

int CallsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

int CallsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant CallsModel::data(const QModelIndex &index, int role) const
{
    const Journal::Entry *entry = entryAt(index.row());
    if (!entry || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    const QString &name = m_journal->nameOf(*entry);
    switch (index.column()) {
    case Time:
        return secondsText(entry->ms);
    case Operation:
        return role == Qt::ToolTipRole ? name : name.section(QStringLiteral("::"), -1);
    case Arguments:
        return module::argumentsText(entry->arguments);
    default:
        return meaningOfCall(name, entry->arguments);
    }
}

QVariant CallsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList titles = {tr("Time"), tr("Operation"), tr("Meaning"), tr("Arguments")};
    return role == Qt::DisplayRole && orientation == Qt::Horizontal ? titles.value(section)
                                                                    : QVariant();
}
