#pragma once

#include "adaptorlink.h"

#include <QAbstractTableModel>
#include <QPointer>

class Session;

/** Every signal of the module: what it said last, how often, how long ago, and who hears it. */
class SignalsModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Name, Last, Count, Age, Listeners, ColumnCount };

    explicit SignalsModel(QObject *parent = nullptr);

    void setSession(const Session *session);
    /** Looks at the session again; what has not changed is not drawn again. */
    void refresh();
    const module::ModuleSignal &signalAt(int row) const { return m_signals[row]; }
    QVariantList lastOf(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void setText(int row, Column column, const QString &text);

    const QList<module::ModuleSignal> m_signals;
    QVector<QVector<QString>> m_texts; // by row and column, as they are drawn
    QVector<int> m_counts;             // by row, as they were when the texts were made
    QPointer<const Session> m_session;
};
