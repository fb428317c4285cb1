#include "panels/callspanel.h"

#include "panels/callsmodel.h"
#include "panels/columnwidths.h"
#include "panels/panelparts.h"
#include "panels/tableactions.h"
#include "session/session.h"

#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QVBoxLayout>

CallsPanel::CallsPanel(QWidget *parent)
    : Panel(parent)
    , m_model(new CallsModel(this))
    , m_table(makeTable(m_model, QStringLiteral("calls")))
    , m_filter(makeFilter(tr("Filter calls, for instance climate or fan up"), m_table))
    , m_count(new QLabel)
{
    m_count->setObjectName(QStringLiteral("calls-count"));
    m_table->elideInTheMiddle(CallsModel::Operation);
    new ColumnWidths(m_table, {{8, 9}, {16, 30}, {20, 0}, {10, 30, 1}}, CallsModel::Meaning);
    auto *column = new QVBoxLayout(this);
    column->addWidget(m_filter);
    column->addWidget(m_table, 1);
    column->addWidget(m_count);

    auto *actions = new TableActions(m_table, this);
    actions->addMoment();
    connect(actions, &TableActions::momentRequested, this, &CallsPanel::momentRequested);
    connect(m_filter, &QLineEdit::textChanged, m_model, &CallsModel::setFilter);
    connect(m_filter, &QLineEdit::textChanged, this, &CallsPanel::showCount);
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
    showCount();
    if (follows)
        m_table->scrollToBottom();
}

/** How many calls there were, as the Drive panel counts them, and why fewer are in the table. */
void CallsPanel::showCount()
{
    if (!session())
        return;
    const int all = session()->callCount();
    const int kept = session()->journal()->ofKind(Journal::Call).size();
    QString text = all == 1 ? tr("1 call") : tr("%1 calls").arg(all);
    if (m_model->rowCount() < kept)
        text = tr("%1 of %2").arg(m_model->rowCount()).arg(text);
    if (kept < all)
        text += tr(", the first %1 are no longer kept").arg(all - kept);
    m_count->setText(text);
}
