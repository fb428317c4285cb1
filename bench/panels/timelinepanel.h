#pragma once

#include "panels/panel.h"

class QLabel;
class QToolButton;
class Rewind;
class TimeRange;
class TimelineView;

/** The timeline with the rewind state and the return to live. */
class TimelinePanel : public Panel
{
    Q_OBJECT
public:
    TimelinePanel(Rewind *rewind, TimeRange *range, QWidget *parent = nullptr);

    void setSession(Session *session) override;

public slots:
    /** Shows a moment on the timeline and on the screen. */
    void rewindTo(qint64 ms);

protected:
    void refresh() override;

private:
    void onRewind();
    void returnToLive();
    void showState();

    Rewind *m_rewind;
    TimeRange *m_range;
    TimelineView *m_view;
    QLabel *m_state;
    QToolButton *m_live;
};
