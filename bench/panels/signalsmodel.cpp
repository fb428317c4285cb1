#include "panels/signalsmodel.h"

#include "panels/eventlines.h"
#include "panels/tableroles.h"
#include "session/session.h"
#include "tools/headerwords.h"
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
        const Journal::Total *total = totalOf(row);
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

const Journal::Total *SignalsModel::totalOf(int row) const
{
    return m_session ? m_session->journal()->totalOf(Journal::Signal, m_texts[row][Name]) : nullptr;
}

QVariantList SignalsModel::lastOf(int row) const
{
    const Journal::Total *total = totalOf(row);
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

/** The signal and what it is, in the words of its header. */
QString SignalsModel::description(int row) const
{
    return QStringLiteral("<p><b>%1</b></p><p>%2</p>")
        .arg(QString::fromLatin1(m_signals[row].method.methodSignature()).toHtmlEscaped(),
             headerWords(m_texts[row][Name]).brief.toHtmlEscaped());
}

/** The last arguments, each with its name and the names of its values. */
QString SignalsModel::lastDescribed(int row) const
{
    const QMetaMethod &method = m_signals[row].method;
    const MethodWords words = headerWords(m_texts[row][Name]);
    const QList<QByteArray> names = method.parameterNames();
    const QVariantList last = lastOf(row);
    QString text;
    for (int i = 0; i < last.size(); ++i) {
        const QString name = QString::fromLatin1(names[i]);
        const auto values = NamedValues::read(words.arguments.value(name), method.parameterType(i));
        text += QStringLiteral("<p><b>%1</b>: %2</p>")
                    .arg(name, values.describe(last[i]).toHtmlEscaped());
    }
    return text;
}

QString SignalsModel::line(int row, int role) const
{
    const Journal::Total *total = totalOf(row);
    if (!total)
        return {};
    return role == JsonRole
               ? recordedLine(total->lastMs, Journal::Signal, total->name, total->last)
               : scenarioLineOf(total->lastMs, Journal::Signal, total->name, total->last);
}

QVariant SignalsModel::data(const QModelIndex &index, int role) const
{
    const int row = index.row();
    switch (role) {
    case Qt::DisplayRole:
        return m_texts[row][index.column()];
    case Qt::ToolTipRole:
        return index.column() == Last ? lastDescribed(row) : description(row);
    case FilterRole:
        return m_texts[row][Name] + QLatin1Char('\n') + headerWords(m_texts[row][Name]).brief;
    case MomentRole:
        return totalOf(row) ? totalOf(row)->lastMs : QVariant();
    case JsonRole:
    case ScenarioRole:
        return line(row, role);
    default:
        return {};
    }
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
