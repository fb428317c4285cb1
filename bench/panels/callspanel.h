#pragma once

#include "panels/panel.h"
#include "session/journal.h"

#include <QAbstractTableModel>
#include <QPointer>

class QLineEdit;
class QTableView;

/** The calls of a journal as a table: time, operation, what its arguments mean, and they. */
class CallsModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Time, Operation, Meaning, Arguments, ColumnCount };

    explicit CallsModel(QObject *parent = nullptr);

    void setJournal(const Journal *journal);
    /** Only calls whose operation or arguments contain this. */
    void setFilter(const QString &filter);
    /** Takes in what was noted since. */
    void catchUp();
    qint64 timeOf(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void rebuild();
    bool isWanted(const Journal::Entry &entry) const;
    const Journal::Entry *entryAt(int row) const;

    QPointer<const Journal> m_journal;
    QString m_filter;
    QVector<qint64> m_rows; // numbers of entries, counted from the journal's start
    qint64 m_next = 0;      // the first one not looked at
};

/** What the plugin asked of the host, decoded; a double click shows the moment on the time line. */
class CallsPanel : public Panel
{
    Q_OBJECT
public:
    explicit CallsPanel(QWidget *parent = nullptr);

    void setSession(Session *session) override;

signals:
    void momentWanted(qint64 ms);

protected:
    void refresh() override;

private:
    void copy();

    CallsModel *m_model;
    QLineEdit *m_filter;
    QTableView *m_table;
};
