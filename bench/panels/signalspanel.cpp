#include "panels/signalspanel.h"

#include "panels/argumenteditor.h"
#include "panels/columnwidths.h"
#include "panels/panelparts.h"
#include "panels/signalsmodel.h"
#include "panels/tableactions.h"
#include "panels/tableroles.h"
#include "panels/wordfilter.h"
#include "session/actions.h"
#include "tools/headerwords.h"

#include <QAction>
#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

/** As high as the editor needs, as long as the table has room. */
class EditorArea : public QScrollArea
{
public:
    explicit EditorArea(ArgumentEditor *editor)
    {
        setFrameShape(NoFrame);
        setWidgetResizable(true);
        setWidget(editor);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    }

    QSize sizeHint() const override { return widget()->sizeHint(); }
    QSize minimumSizeHint() const override
    {
        return {0, qMin(sizeHint().height(), 4 * fontMetrics().lineSpacing())};
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::LayoutRequest)
            updateGeometry();
        return QScrollArea::eventFilter(watched, event);
    }
};

SignalsPanel::SignalsPanel(Actions *actions, QWidget *parent)
    : Panel(parent)
    , m_actions(actions)
    , m_model(new SignalsModel(this))
    , m_filtered(new WordFilterModel(this))
    , m_table(makeTable(m_filtered, QStringLiteral("signals")))
    , m_filter(makeFilter(tr("Filter signals, for instance tire"), m_table))
    , m_title(new QLabel(tr("Select a signal to send.")))
    , m_presets(new QComboBox)
    , m_editor(new ArgumentEditor)
    , m_send(new QPushButton(tr("Send")))
    , m_fault(new QLabel)
{
    m_filtered->setSourceModel(m_model);
    m_table->setDragEnabled(true);
    m_table->elideInTheMiddle(SignalsModel::Name);
    new ColumnWidths(m_table, {{24, 36}, {12, 0}, {6, 7, 1}, {6, 7, 2}, {9, 10, 3}},
                     SignalsModel::Last);
    auto *menu = new TableActions(m_table, this);
    connect(menu->add(QStringLiteral("send-again"), tr("Send &again")), &QAction::triggered, this,
            &SignalsPanel::sendAgain);
    m_send->setObjectName(QStringLiteral("send"));
    m_presets->setObjectName(QStringLiteral("presets"));
    m_title->setWordWrap(true);
    m_fault->setWordWrap(true);
    layOut();

    connect(m_filter, &QLineEdit::textChanged, m_filtered, &WordFilterModel::setFilter);
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
    column->addWidget(new EditorArea(m_editor));
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
    const QString name = QString::fromLatin1(method.name());
    m_title->setText(QStringLiteral("<b>%1</b><br>%2").arg(name, headerWords(name).brief));
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
    showFault(error);
}

void SignalsPanel::showFault(const QString &fault)
{
    m_fault->setText(fault);
    m_fault->setHidden(fault.isEmpty());
}

void SignalsPanel::send()
{
    const QByteArray name = m_model->signalAt(m_chosen).method.name();
    QString error;
    bool isSent = m_actions->sendSignal(QString::fromLatin1(name), m_editor->arguments(), &error);
    for (const QVariantList &follower : qAsConst(m_offered[m_presets->currentIndex()].followers))
        isSent =
            isSent && m_actions->sendSignal(follower.value(0).toString(), follower.mid(1), &error);
    showFault(error);
}

/** The last values of all selected signals that have some. */
void SignalsPanel::sendAgain()
{
    QString error;
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    for (const QModelIndex &row : rows) {
        const int signal = m_filtered->mapToSource(row).row();
        const QString name = QString::fromLatin1(m_model->signalAt(signal).method.name());
        if (row.data(MomentRole).isValid())
            m_actions->sendSignal(name, m_model->lastOf(signal), &error);
    }
    showFault(error);
}
