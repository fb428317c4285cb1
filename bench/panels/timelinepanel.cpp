#include "panels/timelinepanel.h"

#include "panels/panelparts.h"
#include "panels/timelineview.h"
#include "session/rewind.h"
#include "session/session.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

TimelinePanel::TimelinePanel(Rewind *rewind, TimeRange *range, QWidget *parent)
    : Panel(parent)
    , m_rewind(rewind)
    , m_range(range)
    , m_view(new TimelineView(range))
    , m_state(new QLabel)
    , m_live(new QToolButton)
{
    m_view->setObjectName(QStringLiteral("timeline"));
    m_live->setObjectName(QStringLiteral("live"));
    m_live->setText(tr("Return to live"));
    m_state->setObjectName(QStringLiteral("timelineState"));
    m_state->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto *row = new QHBoxLayout;
    row->addWidget(m_state, 1);
    row->addWidget(m_live);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(8, 4, 8, 8);
    column->addLayout(row);
    column->addWidget(m_view, 1);
    connect(m_view, &TimelineView::momentRequested, this, &TimelinePanel::rewindTo);
    connect(m_live, &QToolButton::clicked, this, &TimelinePanel::returnToLive);
    connect(rewind, &Rewind::changed, this, &TimelinePanel::onRewind);
    connect(range, &TimeRange::changed, this, &TimelinePanel::showState);
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

void TimelinePanel::rewindTo(qint64 ms)
{
    m_rewind->show(ms);
}

void TimelinePanel::onRewind()
{
    if (m_rewind->isActive())
        m_view->setMoment(m_rewind->momentMs());
    else
        m_view->clearMoment();
    showState();
}

void TimelinePanel::returnToLive()
{
    m_rewind->end();
    m_range->follow();
    showState();
}

void TimelinePanel::showState()
{
    const bool isRewound = m_rewind->isActive();
    m_live->setEnabled(isRewound || !m_range->follows());
    if (!session() || !isVisible())
        return;
    const Journal *journal = session()->journal();
    QString text =
        isRewound
            ? tr("Rewound to %1 s; the drive is paused.").arg(secondsText(m_rewind->momentMs()))
            : tr("%1 events.").arg(journal->total());
    text += QLatin1Char(' ') + tr("Wheel: zoom. Drag: move, on the scale: rewind. Click: rewind.");
    if (journal->dropped() > 0)
        text += QLatin1Char(' ') + tr("Events before %1 s are no longer kept; the limit is %2. "
                                      "Record the session to keep all.")
                                       .arg(secondsText(journal->beginMs()))
                                       .arg(journal->limit());
    m_state->setText(text);
}
