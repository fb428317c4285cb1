#pragma once

#include "adaptorlink.h"
#include "session/journal.h"

#include <QAbstractTableModel>
#include <QPointer>

class Session;

/** Every signal of the module: its last values, count, age and receivers. */
class SignalsModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Name, Last, Count, Age, Receivers, ColumnCount };

    explicit SignalsModel(QObject *parent = nullptr);

    void setSession(const Session *session);
    /** Updates from the session; unchanged cells are not repainted. */
    void refresh();
    const module::ModuleSignal &signalAt(int row) const { return m_signals[row]; }
    QVariantList lastOf(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    // A row is dragged as the name of its signal.
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;

private:
    void setText(int row, Column column, const QString &text);
    const Journal::Total *totalOf(int row) const;
    QString description(int row) const;
    QString lastDescribed(int row) const;
    QString line(int row, int role) const;

    const QList<module::ModuleSignal> m_signals;
    QVector<QVector<QString>> m_texts; // by row and column
    QVector<int> m_counts;             // by row, of the current texts
    QPointer<const Session> m_session;
};
