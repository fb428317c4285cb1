#include "panels/signalsmodel.h"

#include "session/session.h"
#include "values.h"

#include <QMimeData>

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

/** The number of receivers, without the bench itself, which is always connected. */
static int receiversOf(const module::ModuleSignal &signal)
{
    struct Access : QObject
    {
        using QObject::receivers;
    };
    int (QObject::*const receivers)(const char *) const = &Access::receivers;
    const QByteArray code = QByteArray::number(QSIGNAL_CODE) + signal.method.methodSignature();
    return qMax(0, (signal.emitter->*receivers)(code.constData()) - 1);
}

/** Tenths of a second are worth their repaints only for recent signals. */
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
        const int receivers = receiversOf(m_signals[row]);
        setText(row, Receivers, receivers > 0 ? QString::number(receivers) : tr("none"));
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
    static const QStringList titles = {tr("Signal"), tr("Last"), tr("Count"), tr("Age"),
                                       tr("Receivers")};
    return role == Qt::DisplayRole && orientation == Qt::Horizontal ? titles.value(section)
                                                                    : QVariant();
}

Qt::ItemFlags SignalsModel::flags(const QModelIndex &index) const
{
    return QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled;
}

QStringList SignalsModel::mimeTypes() const
{
    return {QStringLiteral("application/x-norda-signal")};
}

QMimeData *SignalsModel::mimeData(const QModelIndexList &indexes) const
{
    auto *data = new QMimeData;
    data->setData(mimeTypes().constFirst(), m_signals[indexes.value(0).row()].method.name());
    return data;
}
