#pragma once

#include "panels/panel.h"

class CallsModel;
class PanelTable;
class QLabel;
class QLineEdit;

/** The calls of the plugin, decoded; a double click shows the moment on the timeline. */
class CallsPanel : public Panel
{
    Q_OBJECT
public:
    explicit CallsPanel(QWidget *parent = nullptr);

    void setSession(Session *session) override;

signals:
    void momentRequested(qint64 ms);

protected:
    void refresh() override;

private:
    void showCount();

    CallsModel *m_model;
    PanelTable *m_table;
    QLineEdit *m_filter;
    QLabel *m_count;
};
