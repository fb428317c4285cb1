#pragma once

#include "panels/panel.h"

class QLabel;
class QToolButton;
class Rewind;
class TimelineView;

/** The timeline with the rewind state and the return to live. */
class TimelinePanel : public Panel
{
    Q_OBJECT
public:
    explicit TimelinePanel(Rewind *rewind, QWidget *parent = nullptr);

    void setSession(Session *session) override;

public slots:
    /** Shows a moment on the timeline and on the screen. */
    void rewindTo(qint64 ms);

protected:
    void refresh() override;

private:
    void showState();

    Rewind *m_rewind;
    TimelineView *m_view;
    QLabel *m_state;
    QToolButton *m_live;
};
