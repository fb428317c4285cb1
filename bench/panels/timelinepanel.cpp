#include "panels/timelinepanel.h"

#include "panels/panelparts.h"
#include "panels/timelineview.h"
#include "session/rewind.h"
#include "session/session.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

TimelinePanel::TimelinePanel(Rewind *lookBack, QWidget *parent)
    : Panel(parent)
    , m_rewind(lookBack)
    , m_view(new TimelineView)
    , m_state(new QLabel)
    , m_present(new QToolButton)
{
    m_view->setObjectName(QStringLiteral("timeline"));
    m_present->setObjectName(QStringLiteral("present"));
    m_present->setText(tr("Back to the present"));
    m_state->setObjectName(QStringLiteral("timelineState"));
    auto *row = new QHBoxLayout;
    row->addWidget(m_state, 1);
    row->addWidget(m_present);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(8, 4, 8, 8);
    column->addLayout(row);
    column->addWidget(m_view, 1);
    connect(m_view, &TimelineView::momentWanted, this, &TimelinePanel::lookAt);
    connect(m_present, &QToolButton::clicked, lookBack, &Rewind::end);
    connect(lookBack, &Rewind::changed, this, &TimelinePanel::showState);
    showState();
}

void TimelinePanel::setSession(Session *session)
{
    m_view->setSession(session);
    Panel::setSession(session);
}

void TimelinePanel::refresh()
{
    m_view->refresh();
    showState();
}

void TimelinePanel::lookAt(qint64 ms)
{
    m_rewind->show(ms);
}

void TimelinePanel::showState()
{
    const bool back = m_rewind->isActive();
    m_present->setEnabled(back);
    if (back)
        m_view->setMoment(m_rewind->momentMs());
    else if (!m_view->follows())
        m_view->clearMoment();
    if (!session())
        return;
    const Journal *journal = session()->journal();
    QString text = back ? tr("The screen as it was at %1 s; the drive stands still.")
                              .arg(secondsText(m_rewind->momentMs()))
                        : tr("%1 events.").arg(journal->total());
    text += QLatin1Char(' ') +
            tr("Wheel: zoom. Drag: move, or on the scale: look back. Click: look back.");
    if (journal->dropped() > 0)
        text += QLatin1Char(' ') + tr("What was before %1 s is no longer kept: %2 events are the "
                                      "most. Record the session to keep all.")
                                       .arg(secondsText(journal->beginMs()))
                                       .arg(journal->limit());
    m_state->setText(text);
}
