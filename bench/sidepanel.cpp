#include "sidepanel.h"

#include "panels/panelparts.h"
#include "screen.h"
#include "session.h"

#include <QLabel>
#include <QVBoxLayout>

SidePanel::SidePanel(Screen *screen, QWidget *parent)
    : QWidget(parent), m_screen(screen), m_counters(new QLabel), m_findings(new QLabel)
{
    static constexpr int linesShown = 4;
    static constexpr int mostLines = 9;
    m_findings->setWordWrap(true);
    m_findings->setAlignment(Qt::AlignTop);
    m_findings->setMinimumHeight(linesShown * fontMetrics().lineSpacing());
    m_findings->setTextInteractionFlags(Qt::TextSelectableByMouse);
    setMaximumHeight(mostLines * fontMetrics().lineSpacing());
    auto *column = new QVBoxLayout(this);
    column->addWidget(m_findings);
    column->addWidget(m_counters);

    startsWhenNeeded(&m_refresh);
    connect(&m_refresh, &QTimer::timeout, this, &SidePanel::refresh);
}

void SidePanel::setSession(Session *session)
{
    m_session = session;
    module::VehicleSource *source = session->drive()->source();
    m_findings->setText(source->title() + QLatin1Char('\n') +
                        source->findings().join(QLatin1Char('\n')));
    connect(session->journal(), &Journal::noted, this, [this] { wake(this, &m_refresh); });
    refresh();
}

void SidePanel::showEvent(QShowEvent *)
{
    refresh();
}

void SidePanel::refresh()
{
    if (!m_session)
        return;
    m_counters->setText(tr("Signals %1   Calls %2   Beeps %3   Frames %4")
                            .arg(m_session->signalCount())
                            .arg(m_session->callCount())
                            .arg(m_session->beepCount())
                            .arg(m_screen->framesPainted()));
}
