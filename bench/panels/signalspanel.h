#pragma once

#include "panels/panel.h"
#include "panels/signalpresets.h"

class Actions;
class ArgumentEditor;
class QComboBox;
class QLabel;
class QLineEdit;
class QModelIndex;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;
class SignalsModel;

/** All signals, and an editor to send one. */
class SignalsPanel : public Panel
{
    Q_OBJECT
public:
    explicit SignalsPanel(Actions *actions, QWidget *parent = nullptr);

    void setSession(Session *session) override;

protected:
    void refresh() override;

private:
    void layOut();
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
