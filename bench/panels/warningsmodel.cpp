#include "panels/warningsmodel.h"

#include "pages.h"
#include "panels/panelparts.h"
#include "panels/tableroles.h"
#include "scenario/scenarioline.h"

#include <QJsonDocument>
#include <QJsonObject>

void WarningsModel::catchUp(const Warnings &warnings)
{
    const QVector<Warnings::Entry> before = m_entries;
    const QVector<Warnings::Entry> now = warnings.entries();
    m_drive = warnings.drive();
    if (now.size() > before.size())
        beginInsertRows({}, before.size(), now.size() - 1);
    m_entries = now;
    if (now.size() > before.size())
        endInsertRows();
    for (int row = 0; row < before.size(); ++row) {
        if (before[row].count != now[row].count || before[row].first.ms != now[row].first.ms)
            emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
    }
}

int WarningsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_entries.size();
}

int WarningsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString WarningsModel::text(const Warnings::Entry &entry, int column) const
{
    switch (column) {
    case Time:
        return entry.first.ms < 0 ? QString() : secondsText(entry.first.ms);
    case Page:
        return entry.first.page < 0 ? QString() : pageText(entry.first.page);
    case Count:
        return QString::number(entry.count);
    default:
        return entry.text;
    }
}

QString WarningsModel::description(const Warnings::Entry &entry) const
{
    const QString when = entry.count == 1 ? tr("Once, at %1 s.").arg(secondsText(entry.first.ms))
                                          : tr("%1 times, from %2 s to %3 s.")
                                                .arg(entry.count)
                                                .arg(secondsText(entry.first.ms))
                                                .arg(secondsText(entry.lastMs));
    const QString drive = entry.drive == m_drive ? QString() : tr("In an earlier drive.");
    return QStringLiteral("<p>%1</p><p>%2 %3</p>").arg(entry.text.toHtmlEscaped(), when, drive);
}

/** A recording has no warnings; the line is in its form. */
static QString jsonOf(const Warnings::Entry &entry)
{
    const QJsonObject line = {{"t", double(entry.first.ms)},
                              {"warning", entry.text},
                              {"page", entry.first.page},
                              {"count", entry.count}};
    return QString::fromUtf8(QJsonDocument(line).toJson(QJsonDocument::Compact));
}

QVariant WarningsModel::data(const QModelIndex &index, int role) const
{
    const Warnings::Entry &entry = m_entries[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return text(entry, index.column());
    case Qt::ToolTipRole:
        return description(entry);
    case FilterRole:
        return text(entry, Page) + QLatin1Char('\n') + entry.text;
    case MomentRole:
        return entry.drive == m_drive && entry.first.ms >= 0 ? entry.first.ms : QVariant();
    case JsonRole:
        return jsonOf(entry);
    case ScenarioRole:
        return timedLine(entry.first.ms,
                         scenarioLine(QStringLiteral("expect warning"), {entry.text}));
    default:
        return {};
    }
}

QVariant WarningsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList titles = {tr("Time"), tr("Page"), tr("Count"), tr("Warning")};
    return role == Qt::DisplayRole && orientation == Qt::Horizontal ? titles.value(section)
                                                                    : QVariant();
}
