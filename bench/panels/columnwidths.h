#pragma once

#include <QObject>
#include <QString>
#include <QVector>

class QTableView;

/**
 * The columns of a table fill its width at any size. One is stretched; the others get wider with
 * the table up to what they need, and some are hidden in a narrow one. Widths that the user sets
 * are kept in the settings of the bench.
 */
class ColumnWidths : public QObject
{
    Q_OBJECT
public:
    /** Widths in characters. */
    struct Column
    {
        int least;
        int most;
        int rank = 0; ///< where there is no room, the highest is hidden first; 0 is never hidden
    };

    /** @param table  is named already, and owns this */
    ColumnWidths(QTableView *table, const QVector<Column> &columns, int stretched);
    ~ColumnWidths() override;

    /** Forgets the widths that the user set. */
    void reset();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void layOut();
    void hideWhatHasNoRoom(int width);
    int pixels(int characters) const;
    QString key(int column) const;

    QTableView *m_table;
    const QString m_name; // of the table
    const QVector<Column> m_columns;
    QVector<int> m_kept; // widths that the user set, 0 for none
    const int m_stretched;
    bool m_isLayingOut = false;
};
