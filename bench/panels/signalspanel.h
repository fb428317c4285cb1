#pragma once

#include "panels/panel.h"
#include "panels/signalpresets.h"

class Actions;
class ArgumentEditor;
class PanelTable;
class QComboBox;
class QLabel;
class QLineEdit;
class QModelIndex;
class QPushButton;
class SignalsModel;
class WordFilterModel;

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
    void showFault(const QString &fault);
    void send();
    void sendAgain();

    Actions *m_actions;
    SignalsModel *m_model;
    WordFilterModel *m_filtered;
    PanelTable *m_table;
    QLineEdit *m_filter;
    QLabel *m_title;
    QComboBox *m_presets;
    ArgumentEditor *m_editor;
    QPushButton *m_send;
    QLabel *m_fault;
    QVector<SignalPreset> m_offered; // the last value, then the presets
    int m_chosen = -1;
};
