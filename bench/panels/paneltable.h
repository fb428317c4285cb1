#pragma once

#include <QTableView>

/**
 * A table of whole rows. It keeps the keys that move in a table; all others, single letters and Esc
 * among them, are left to the window.
 */
class PanelTable : public QTableView
{
    Q_OBJECT
public:
    explicit PanelTable(QAbstractItemModel *model, QWidget *parent = nullptr);

    void keyboardSearch(const QString &text) override;
    /** Gives a column's texts dots in their middle: their ends tell them apart. */
    void elideInTheMiddle(int column);
    /** The titles and two rows. */
    QSize minimumSizeHint() const override;
    /** Takes the focus, with a row selected. */
    void enter();

signals:
    /** A double click, or Enter. */
    void rowChosen(const QModelIndex &index);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
