#pragma once

#include "adaptorlink.h"
#include "panels/panel.h"
#include "panels/signalpresets.h"

#include <QAbstractTableModel>
#include <QPointer>

class ArgumentEditor;
class Actions;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;

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

/** All signals, and an editor to send one by hand. */
class SignalsPanel : public Panel
{
    Q_OBJECT
public:
    explicit SignalsPanel(Actions *hand, QWidget *parent = nullptr);

    void setSession(Session *session) override;

protected:
    void refresh() override;

private:
    void choose(const QModelIndex &index);
    void takePreset(int row);
    void check();
    void send();

    Actions *m_actions;
    SignalsModel *m_model;
    QSortFilterProxyModel *m_filtered;
    QLineEdit *m_filter;
    QTableView *m_table;
    QLabel *m_title;
    QComboBox *m_presets;
    ArgumentEditor *m_editor;
    QPushButton *m_send;
    QLabel *m_fault;
    QVector<SignalPreset> m_offered; // the last value, then the presets
    int m_chosen = -1;
};
