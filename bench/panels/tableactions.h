#pragma once

#include <QKeySequence>
#include <QObject>

class Panel;
class PanelTable;
class QAction;

/** What can be done with the rows of a panel's table: its context menu. See TableRole. */
class TableActions : public QObject
{
    Q_OBJECT
public:
    /** @param panel  knows the files that an export must not replace */
    TableActions(PanelTable *table, const Panel *panel);
    ~TableActions() override;

    /** Adds an action for the selected rows, with its name as an object. */
    QAction *add(const QString &name, const QString &text, const QKeySequence &key = {});
    /** Adds the jump to the moment of a row, which a double click and Enter do as well. */
    void addMoment();
    /** Writes all rows that the filter leaves. @param error  one line that names the file */
    bool exportTo(const QString &file, QString *error) const;

signals:
    void momentRequested(qint64 ms);

private:
    void updateEnabled();
    void copyTexts();
    void copyLines(int role);
    void goToMoment(const QModelIndex &row);
    void chooseFile();

    PanelTable *m_table;
    const Panel *m_panel;
    QList<QAction *> m_forRows; // enabled while rows are selected
};
