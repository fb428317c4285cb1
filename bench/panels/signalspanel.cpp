#include "panels/signalspanel.h"

#include "panels/argumenteditor.h"
#include "panels/panelparts.h"
#include "panels/signalsmodel.h"
#include "session/actions.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

SignalsPanel::SignalsPanel(Actions *actions, QWidget *parent)
    : Panel(parent)
    , m_actions(actions)
    , m_model(new SignalsModel(this))
    , m_filtered(new QSortFilterProxyModel(this))
    , m_filter(makeFilter(tr("Filter signals, for instance tire")))
    , m_title(new QLabel(tr("Select a signal to send.")))
    , m_presets(new QComboBox)
    , m_editor(new ArgumentEditor)
    , m_send(new QPushButton(tr("Send")))
    , m_fault(new QLabel)
{
    m_filtered->setSourceModel(m_model);
    m_filtered->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_table = makeTable(m_filtered);
    m_table->setObjectName(QStringLiteral("signals"));
    m_table->setDragEnabled(true);
    m_table->setColumnWidth(SignalsModel::Name, 190);
    m_table->setColumnWidth(SignalsModel::Last, 100);
    m_table->setColumnWidth(SignalsModel::Count, 46);
    m_table->setColumnWidth(SignalsModel::Age, 52);
    m_send->setObjectName(QStringLiteral("send"));
    m_presets->setObjectName(QStringLiteral("presets"));
    m_fault->setWordWrap(true);
    layOut();

    connect(m_filter, &QLineEdit::textChanged, m_filtered,
            &QSortFilterProxyModel::setFilterFixedString);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &SignalsPanel::choose);
    connect(m_presets, qOverload<int>(&QComboBox::activated), this, &SignalsPanel::takePreset);
    connect(m_editor, &ArgumentEditor::changed, this, &SignalsPanel::check);
    connect(m_send, &QPushButton::clicked, this, &SignalsPanel::send);
    check();
}

void SignalsPanel::layOut()
{
    auto *row = new QHBoxLayout;
    row->addWidget(m_presets, 1);
    row->addWidget(m_send);
    auto *column = new QVBoxLayout(this);
    column->addWidget(m_filter);
    column->addWidget(m_table, 1);
    column->addWidget(m_title);
    column->addWidget(m_editor);
    column->addLayout(row);
    column->addWidget(m_fault);
}

void SignalsPanel::setSession(Session *session)
{
    m_model->setSession(session);
    Panel::setSession(session);
}

void SignalsPanel::refresh()
{
    m_model->refresh();
}

void SignalsPanel::choose(const QModelIndex &index)
{
    m_chosen = index.isValid() ? m_filtered->mapToSource(index).row() : -1;
    m_presets->clear();
    if (m_chosen < 0)
        return;
    const QMetaMethod method = m_model->signalAt(m_chosen).method;
    m_title->setText(QStringLiteral("<b>%1</b>").arg(QString::fromLatin1(method.name())));
    m_editor->setMethod(method);
    m_presets->addItem(tr("Last value"));
    m_offered = {{QString(), m_model->lastOf(m_chosen), {}}};
    m_offered += presetsOf(method.name());
    for (int row = 1; row < m_offered.size(); ++row)
        m_presets->addItem(m_offered[row].title);
    takePreset(0);
}

void SignalsPanel::takePreset(int row)
{
    m_editor->setArguments(m_offered[row].arguments);
    check();
}

void SignalsPanel::check()
{
    QString error;
    m_send->setEnabled(m_chosen >= 0 && m_editor->isGood(&error));
    m_fault->setText(error);
}

void SignalsPanel::send()
{
    const QByteArray name = m_model->signalAt(m_chosen).method.name();
    QString error;
    bool isSent = m_actions->sendSignal(QString::fromLatin1(name), m_editor->arguments(), &error);
    for (const QVariantList &follower : qAsConst(m_offered[m_presets->currentIndex()].followers))
        isSent =
            isSent && m_actions->sendSignal(follower.value(0).toString(), follower.mid(1), &error);
    m_fault->setText(error);
}
