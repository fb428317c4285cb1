#pragma once

#include "panels/panel.h"

class QLabel;
class Screen;

/** The source of the drive, and how much has crossed the adaptor. */
class DrivePanel : public Panel
{
    Q_OBJECT
public:
    explicit DrivePanel(Screen *screen, QWidget *parent = nullptr);

    void setSession(Session *session) override;

protected:
    void refresh() override;

private:
    Screen *m_screen;
    QLabel *m_counters;
    QLabel *m_findings;
};
