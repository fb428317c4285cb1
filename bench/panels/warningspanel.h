#pragma once

#include "panels/panel.h"

class PanelTable;
class QLabel;
class QLineEdit;
class WarningsModel;
class WindowStack;
class WordFilterModel;

/** The warnings since the start: when, on which page, and how often. */
class WarningsPanel : public Panel
{
    Q_OBJECT
public:
    explicit WarningsPanel(const WindowStack *windows, QWidget *parent = nullptr);

    void setSession(Session *session) override;

signals:
    void momentRequested(qint64 ms);
    /** How many warnings there were, also while the panel is hidden. */
    void countChanged(int count);

protected:
    void refresh() override;

private:
    void onWarnings();
    void showCount();

    const WindowStack *m_windows;
    WarningsModel *m_model;
    WordFilterModel *m_filtered;
    PanelTable *m_table;
    QLineEdit *m_filter;
    QLabel *m_count;
};
