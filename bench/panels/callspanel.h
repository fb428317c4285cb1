#pragma once

#include "panels/panel.h"

class CallsModel;
class QLineEdit;
class QTableView;

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
    void copy();

    CallsModel *m_model;
    QLineEdit *m_filter;
    QTableView *m_table;
};
