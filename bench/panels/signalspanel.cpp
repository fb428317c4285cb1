#include "panels/signalspanel.h"

#include "panels/argumenteditor.h"
#include "panels/panelparts.h"
#include "session/actions.h"
#include "session/session.h"
#include "values.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

// ---- Model --------------------------------------------------------------------------------------

SignalsModel::SignalsModel(QObject *parent)
    : QAbstractTableModel(parent)
    , m_signals(module::moduleSignals())
    , m_texts(m_signals.size(), QVector<QString>(ColumnCount))
    , m_counts(m_signals.size(), 0)
{
    for (int row = 0; row < m_signals.size(); ++row)
        m_texts[row][Name] = QString::fromLatin1(m_signals[row].method.name());
}

void SignalsModel::setSession(const Session *session)
{
    m_session = session;
    beginResetModel();
    m_counts.fill(0);
    for (QVector<QString> &texts : m_texts)
        texts[Last] = texts[Count] = texts[Age] = QString();
    endResetModel();
    refresh();
}

/** How many others listen to a signal; the bench itself is one who always does. */
static int listenersOf(const module::ModuleSignal &signal)
{
    struct Access : QObject
    {
        using QObject::receivers;
    };
    int (QObject::*const receivers)(const char *) const = &Access::receivers;
    const QByteArray code = QByteArray::number(QSIGNAL_CODE) + signal.method.methodSignature();
    return qMax(0, (signal.emitter->*receivers)(code.constData()) - 1);
}

/** Tenths of a second matter for what has just come, and cost a repaint each. */
static QString ageText(qint64 ms)
{
    static constexpr qint64 recentMs = 10000;
    return SignalsModel::tr("%1 s").arg(double(ms) / 1000, 0, 'f', ms < recentMs ? 1 : 0);
}

void SignalsModel::refresh()
{
    if (!m_session)
        return;
    for (int row = 0; row < m_signals.size(); ++row) {
        const Journal::Total *total =
            m_session->journal()->totalOf(Journal::Signal, m_texts[row][Name]);
        const int listeners = listenersOf(m_signals[row]);
        setText(row, Listeners, listeners > 0 ? QString::number(listeners) : tr("nobody"));
        setText(row, Age, total ? ageText(m_session->nowMs() - total->lastMs) : QString());
        const int count = total ? total->count : 0;
        if (count == m_counts[row])
            continue;
        m_counts[row] = count;
        setText(row, Count, QString::number(count));
        setText(row, Last, module::argumentsText(total->last));
    }
}

void SignalsModel::setText(int row, Column column, const QString &text)
{
    if (m_texts[row][column] == text)
        return;
    m_texts[row][column] = text;
    emit dataChanged(index(row, column), index(row, column));
}

QVariantList SignalsModel::lastOf(int row) const
{
    const Journal::Total *total =
        m_session ? m_session->journal()->totalOf(Journal::Signal, m_texts[row][Name]) : nullptr;
    return total ? total->last : QVariantList();
}

int SignalsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_signals.size();
}

int SignalsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant SignalsModel::data(const QModelIndex &index, int role) const
{
    if (role == Qt::ToolTipRole && index.column() == Name)
        return QString::fromLatin1(m_signals[index.row()].method.methodSignature());
    const bool isText =
        role == Qt::DisplayRole || (role == Qt::ToolTipRole && index.column() == Last);
    return isText ? m_texts[index.row()][index.column()] : QVariant();
}

QVariant SignalsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList titles = {tr("Signal"), tr("Last"), tr("Count"), tr("Ago"),
                                       tr("Heard by")};
    return role == Qt::DisplayRole && orientation == Qt::Horizontal ? titles.value(section)
                                                                    : QVariant();
}

// ---- Panel --------------------------------------------------------------------------------------

SignalsPanel::SignalsPanel(Actions *hand, QWidget *parent)
    : Panel(parent)
    , m_actions(hand)
    , m_model(new SignalsModel(this))
    , m_filtered(new QSortFilterProxyModel(this))
    , m_filter(makeFilter(tr("Filter signals, for instance tire")))
    , m_title(new QLabel(tr("Choose a signal to send it by hand.")))
    , m_presets(new QComboBox)
    , m_editor(new ArgumentEditor)
    , m_send(new QPushButton(tr("Send")))
    , m_fault(new QLabel)
{
    m_filtered->setSourceModel(m_model);
    m_filtered->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_table = makeTable(m_filtered);
    m_table->setObjectName(QStringLiteral("signals"));
    m_table->setColumnWidth(SignalsModel::Name, 190);
    m_table->setColumnWidth(SignalsModel::Last, 100);
    m_table->setColumnWidth(SignalsModel::Count, 46);
    m_table->setColumnWidth(SignalsModel::Age, 52);
    m_send->setObjectName(QStringLiteral("send"));
    m_presets->setObjectName(QStringLiteral("presets"));
    m_fault->setWordWrap(true);

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

    connect(m_filter, &QLineEdit::textChanged, m_filtered,
            &QSortFilterProxyModel::setFilterFixedString);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &SignalsPanel::choose);
    connect(m_presets, qOverload<int>(&QComboBox::activated), this, &SignalsPanel::takePreset);
    connect(m_editor, &ArgumentEditor::changed, this, &SignalsPanel::check);
    connect(m_send, &QPushButton::clicked, this, &SignalsPanel::send);
    check();
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
    m_actions->act(QStringLiteral("signal"),
                   QVariantList{QString::fromLatin1(name)} + m_editor->arguments());
    for (const QVariantList &follower : qAsConst(m_offered[m_presets->currentIndex()].followers))
        m_actions->act(QStringLiteral("signal"), follower);
}
