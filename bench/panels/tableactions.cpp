#include "panels/tableactions.h"

#include "panels/panel.h"
#include "panels/paneltable.h"
#include "panels/tableexport.h"
#include "panels/tableroles.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QMessageBox>

#include <algorithm>

TableActions::TableActions(PanelTable *table, const Panel *panel)
    : QObject(table), m_table(table), m_panel(panel)
{
    connect(add(QStringLiteral("copy-text"), tr("&Copy as text"), QKeySequence::Copy),
            &QAction::triggered, this, &TableActions::copyTexts);
    connect(add(QStringLiteral("copy-json"), tr("Copy as &JSON")), &QAction::triggered, this,
            [this] { copyLines(JsonRole); });
    connect(add(QStringLiteral("copy-scenario"), tr("Copy as &scenario line")), &QAction::triggered,
            this, [this] { copyLines(ScenarioRole); });
    auto *exporting = new QAction(tr("&Export as CSV..."), table);
    exporting->setObjectName(QStringLiteral("export-csv"));
    table->addAction(exporting);
    connect(exporting, &QAction::triggered, this, &TableActions::chooseFile);
    connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &TableActions::updateEnabled);
    connect(table->model(), &QAbstractItemModel::modelReset, this, &TableActions::updateEnabled);
}

TableActions::~TableActions() = default;

QAction *TableActions::add(const QString &name, const QString &text, const QKeySequence &key)
{
    auto *action = new QAction(text, m_table);
    action->setObjectName(name);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut);
    action->setEnabled(false);
    m_table->insertAction(m_table->findChild<QAction *>(QStringLiteral("export-csv")), action);
    m_forRows.append(action);
    return action;
}

void TableActions::addMoment()
{
    QAction *going = add(QStringLiteral("go-to-moment"), tr("&Go to this moment"));
    connect(going, &QAction::triggered, this, [this] { goToMoment(m_table->currentIndex()); });
    connect(m_table, &PanelTable::rowChosen, this, &TableActions::goToMoment);
}

void TableActions::updateEnabled()
{
    for (QAction *action : qAsConst(m_forRows))
        action->setEnabled(m_table->selectionModel()->hasSelection());
}

static QModelIndexList selectedRows(const QTableView *table)
{
    QModelIndexList rows = table->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    return rows;
}

void TableActions::copyTexts()
{
    QStringList lines;
    const QModelIndexList rows = selectedRows(m_table);
    for (const QModelIndex &row : rows) {
        QStringList cells;
        for (int column = 0; column < m_table->model()->columnCount(); ++column)
            cells.append(row.siblingAtColumn(column).data().toString());
        lines.append(cells.join(QLatin1Char('\t')));
    }
    QApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

/** In the order of their moments, as a scenario and a recording need them. */
void TableActions::copyLines(int role)
{
    QModelIndexList rows = selectedRows(m_table);
    std::stable_sort(rows.begin(), rows.end(), [](const QModelIndex &a, const QModelIndex &b) {
        return a.data(MomentRole).toLongLong() < b.data(MomentRole).toLongLong();
    });
    QStringList lines;
    for (const QModelIndex &row : qAsConst(rows)) {
        const QString line = row.data(role).toString();
        if (!line.isEmpty())
            lines.append(line);
    }
    QApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

void TableActions::goToMoment(const QModelIndex &row)
{
    const QVariant moment = row.data(MomentRole);
    if (moment.isValid())
        emit momentRequested(moment.toLongLong());
}

bool TableActions::exportTo(const QString &file, QString *error) const
{
    return exportCsv(*m_table->model(), file, m_panel->filesInUse(), error);
}

void TableActions::chooseFile()
{
    const QString title = tr("Export as CSV");
    const QString file =
        QFileDialog::getSaveFileName(m_table, title, m_table->objectName() + QStringLiteral(".csv"),
                                     tr("Comma-separated values (*.csv)"));
    QString error;
    if (!file.isEmpty() && !exportTo(file, &error))
        QMessageBox::warning(m_table, title, error);
}
