#pragma once

#include "session/warnings.h"

#include <QAbstractTableModel>

/** The warnings since the start, each text once, in the order in which they were seen first. */
class WarningsModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Time, Page, Count, Text, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    /** Takes what is new; unchanged rows are not repainted. */
    void catchUp(const Warnings &warnings);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString text(const Warnings::Entry &entry, int column) const;
    QString description(const Warnings::Entry &entry) const;

    QVector<Warnings::Entry> m_entries;
    int m_drive = 0;
};
