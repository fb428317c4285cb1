#include "panels/callsmodel.h"

#include "panels/callwords.h"
#include "panels/eventlines.h"
#include "panels/panelparts.h"
#include "panels/tableroles.h"
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
    m_filter = WordFilter(filter);
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
    return m_filter.isEmpty() ||
           m_filter.matches(m_journal->nameOf(entry) + QLatin1Char('\n') + text(entry, Meaning) +
                            QLatin1Char('\n') + text(entry, Arguments));
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

int CallsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

int CallsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString CallsModel::text(const Journal::Entry &entry, int column) const
{
    const QString &name = m_journal->nameOf(entry);
    switch (column) {
    case Time:
        return secondsText(entry.ms);
    case Operation:
        return name.section(QStringLiteral("::"), -1);
    case Arguments:
        return module::argumentsText(entry.arguments);
    default:
        return meaningOfCall(name, entry.arguments);
    }
}

QVariant CallsModel::data(const QModelIndex &index, int role) const
{
    const Journal::Entry *entry = entryAt(index.row());
    if (!entry)
        return {};
    const QString &name = m_journal->nameOf(*entry);
    switch (role) {
    case Qt::ToolTipRole:
        return index.column() == Operation ? name : text(*entry, index.column());
    case Qt::DisplayRole:
        return text(*entry, index.column());
    case MomentRole:
        return entry->ms;
    case JsonRole:
        return recordedLine(entry->ms, Journal::Call, name, entry->arguments);
    case ScenarioRole:
        return scenarioLineOf(entry->ms, Journal::Call, name, entry->arguments);
    default:
        return {};
    }
}

QVariant CallsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList titles = {tr("Time"), tr("Operation"), tr("Meaning"), tr("Arguments")};
    return role == Qt::DisplayRole && orientation == Qt::Horizontal ? titles.value(section)
                                                                    : QVariant();
}
