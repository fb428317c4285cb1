#include "panels/callspanel.h"

#include "panels/callsmodel.h"
#include "panels/panelparts.h"
#include "session/session.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>
#include <QVBoxLayout>

CallsPanel::CallsPanel(QWidget *parent)
    : Panel(parent)
    , m_model(new CallsModel(this))
    , m_filter(makeFilter(tr("Filter calls, for instance climate or fan up")))
    , m_table(makeTable(m_model))
{
    m_table->setObjectName(QStringLiteral("calls"));
    m_table->setColumnWidth(CallsModel::Time, 70);
    m_table->setColumnWidth(CallsModel::Operation, 196);
    m_table->setColumnWidth(CallsModel::Meaning, 120);
    auto *column = new QVBoxLayout(this);
    column->addWidget(m_filter);
    column->addWidget(m_table);

    auto *copying = new QAction(tr("Copy"), m_table);
    copying->setShortcut(QKeySequence::Copy);
    copying->setShortcutContext(Qt::WidgetShortcut);
    m_table->addAction(copying);
    m_table->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(copying, &QAction::triggered, this, &CallsPanel::copy);
    connect(m_filter, &QLineEdit::textChanged, m_model, &CallsModel::setFilter);
    connect(m_table, &QTableView::doubleClicked, this, [this](const QModelIndex &index) {
        emit momentRequested(m_model->timeOf(index.row()));
    });
}

void CallsPanel::setSession(Session *session)
{
    m_model->setJournal(session->journal());
    Panel::setSession(session);
}

void CallsPanel::refresh()
{
    const QScrollBar *bar = m_table->verticalScrollBar();
    const bool follows = bar->value() == bar->maximum();
    m_model->catchUp();
    if (follows)
        m_table->scrollToBottom();
}

void CallsPanel::copy()
{
    QStringList lines;
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    for (const QModelIndex &row : rows) {
        QStringList cells;
        for (int column = 0; column < CallsModel::ColumnCount; ++column)
            cells.append(row.sibling(row.row(), column).data().toString());
        lines.append(cells.join(QLatin1Char('\t')));
    }
    QApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}
