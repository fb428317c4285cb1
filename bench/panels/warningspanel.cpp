#include "panels/warningspanel.h"

#include "panels/columnwidths.h"
#include "panels/panelparts.h"
#include "panels/tableactions.h"
#include "panels/warningsmodel.h"
#include "panels/wordfilter.h"
#include "session/session.h"
#include "windowstack.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

WarningsPanel::WarningsPanel(const WindowStack *windows, QWidget *parent)
    : Panel(parent)
    , m_windows(windows)
    , m_model(new WarningsModel(this))
    , m_filtered(new WordFilterModel(this))
    , m_table(makeTable(m_filtered, QStringLiteral("warnings")))
    , m_filter(makeFilter(tr("Filter warnings, for instance climate"), m_table))
    , m_count(new QLabel)
{
    m_filtered->setSourceModel(m_model);
    m_count->setObjectName(QStringLiteral("warnings-count"));
    m_count->setWordWrap(true);
    new ColumnWidths(m_table, {{8, 9}, {12, 14}, {6, 7}, {18, 0}}, WarningsModel::Text);
    auto *column = new QVBoxLayout(this);
    column->addWidget(m_filter);
    column->addWidget(m_table, 1);
    column->addWidget(m_count);

    auto *actions = new TableActions(m_table, this);
    actions->addMoment();
    connect(actions, &TableActions::momentRequested, this, &WarningsPanel::momentRequested);
    connect(m_filter, &QLineEdit::textChanged, m_filtered, &WordFilterModel::setFilter);
    connect(m_filter, &QLineEdit::textChanged, this, &WarningsPanel::showCount);
    if (const Warnings *warnings = Warnings::instance())
        connect(warnings, &Warnings::changed, this, &WarningsPanel::onWarnings);
}

void WarningsPanel::setSession(Session *session)
{
    if (Warnings *warnings = Warnings::instance())
        warnings->beginDrive(session, m_windows);
    Panel::setSession(session);
}

void WarningsPanel::onWarnings()
{
    emit countChanged(Warnings::count());
    scheduleRefresh();
}

void WarningsPanel::refresh()
{
    if (const Warnings *warnings = Warnings::instance())
        m_model->catchUp(*warnings);
    showCount();
}

/** How many warnings there were, and why fewer are in the table. */
void WarningsPanel::showCount()
{
    const int all = Warnings::count();
    QString text = all == 1 ? tr("1 warning") : tr("%1 warnings").arg(all);
    if (m_filtered->rowCount() < m_model->rowCount())
        text =
            tr("%1 of %2 texts, %3").arg(m_filtered->rowCount()).arg(m_model->rowCount()).arg(text);
    const Warnings *warnings = Warnings::instance();
    if (warnings && warnings->notKept() > 0)
        text += tr(", %1 of them not kept: the limit is %2 different texts")
                    .arg(warnings->notKept())
                    .arg(Warnings::mostEntries);
    m_count->setText(text);
}
