#pragma once

#include "panels/panel.h"

class QLabel;
class QToolButton;
class Rewind;
class TimelineView;

/** The line with what one can do about it: zoom, look at a moment, come back to the present. */
class TimelinePanel : public Panel
{
    Q_OBJECT
public:
    explicit TimelinePanel(Rewind *lookBack, QWidget *parent = nullptr);

    void setSession(Session *session) override;

public slots:
    /** Shows a moment on the line and on the screen. */
    void lookAt(qint64 ms);

protected:
    void refresh() override;

private:
    void showState();

    Rewind *m_rewind;
    TimelineView *m_view;
    QLabel *m_state;
    QToolButton *m_present;
};
