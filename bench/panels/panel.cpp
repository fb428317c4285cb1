#include "panels/panel.h"

#include "session/session.h"

Panel::Panel(QWidget *parent) : QWidget(parent)
{
    static constexpr int refreshMs = 250;
    m_timer.setSingleShot(true);
    m_timer.setInterval(refreshMs);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        if (m_session)
            refresh();
    });
}

Panel::~Panel() = default;

Session *Panel::session() const
{
    return m_session;
}

output::InputFiles Panel::filesInUse() const
{
    return m_files ? m_files() : output::InputFiles();
}

void Panel::setSession(Session *session)
{
    m_session = session;
    connect(session->journal(), &Journal::noted, this, &Panel::scheduleRefresh);
    connect(session->drive(), &module::Drive::positionChanged, this, &Panel::scheduleRefresh);
    refresh();
}

void Panel::showEvent(QShowEvent *)
{
    if (m_session)
        refresh();
}

void Panel::scheduleRefresh()
{
    if (isVisible() && !m_timer.isActive())
        m_timer.start();
}
