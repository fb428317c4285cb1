#pragma once

#include "panels/wordfilter.h"
#include "session/journal.h"

#include <QAbstractTableModel>
#include <QPointer>

/** The calls of a journal as a table: time, operation, meaning and arguments. */
class CallsModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Time, Operation, Meaning, Arguments, ColumnCount };

    explicit CallsModel(QObject *parent = nullptr);

    void setJournal(const Journal *journal);
    /** Only calls whose operation, meaning and arguments contain all words of this. */
    void setFilter(const QString &filter);
    /** Adds the calls since the last time. */
    void catchUp();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void rebuild();
    bool isWanted(const Journal::Entry &entry) const;
    const Journal::Entry *entryAt(int row) const;
    QString text(const Journal::Entry &entry, int column) const;

    QPointer<const Journal> m_journal;
    WordFilter m_filter;
    QVector<qint64> m_rows; // numbers of entries, counted from the journal's start
    qint64 m_next = 0;      // the first entry not yet read
};
