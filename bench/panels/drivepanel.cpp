#include "panels/drivepanel.h"

#include "screen.h"
#include "session/session.h"

#include <QLabel>
#include <QVBoxLayout>

DrivePanel::DrivePanel(Screen *screen, QWidget *parent)
    : Panel(parent), m_screen(screen), m_counters(new QLabel), m_findings(new QLabel)
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
}

void DrivePanel::setSession(Session *session)
{
    const module::VehicleSource *source = session->drive()->source();
    m_findings->setText(source->title() + QLatin1Char('\n') +
                        source->findings().join(QLatin1Char('\n')));
    Panel::setSession(session);
}

void DrivePanel::refresh()
{
    m_counters->setText(tr("Signals %1   Calls %2   Beeps %3   Frames %4")
                            .arg(session()->signalCount())
                            .arg(session()->callCount())
                            .arg(session()->beepCount())
                            .arg(m_screen->framesPainted()));
}
