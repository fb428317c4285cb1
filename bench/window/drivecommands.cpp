#include "window/drivecommands.h"

#include "session/actions.h"
#include "session/rewind.h"
#include "session/session.h"
#include "window/commands.h"
#include "window/repeatedpart.h"
#include "window/transportbar.h"

DriveCommands::DriveCommands(const Commands *commands, Actions *actions, TransportBar *transport,
                             Rewind *rewind)
    : QObject(transport), m_transport(transport), m_rewind(rewind)
{
    commands->on("play", this, &DriveCommands::togglePlaying);
    commands->on("next", this, &DriveCommands::stepToNext);
    commands->on("previous", this, &DriveCommands::stepToPrevious);
    commands->on("live", rewind, &Rewind::end);
    commands->on("time", transport, &TransportBar::editTime);
    commands->on("faster", transport, [transport] { transport->changeSpeed(1); });
    commands->on("slower", transport, [transport] { transport->changeSpeed(-1); });
    commands->on("repeat-from", transport->repeatedPart(), &RepeatedPart::beginHere);
    commands->on("repeat-to", transport->repeatedPart(), &RepeatedPart::endHere);
    commands->on("repeat-off", transport->repeatedPart(), &RepeatedPart::clear);
    connect(transport, &TransportBar::momentRequested, actions, &Actions::seek);
    connect(transport, &TransportBar::previousRequested, this, &DriveCommands::stepToPrevious);
    connect(rewind, &Rewind::changed, transport,
            [transport, rewind] { transport->setEnabled(!rewind->isActive()); });
}

void DriveCommands::setSession(Session *session)
{
    m_session = session;
    m_transport->setDrive(session->drive());
}

void DriveCommands::togglePlaying()
{
    if (m_rewind->isActive())
        m_rewind->end();
    else
        m_transport->togglePlaying();
}

/** The time of the next event of any kind, -1 for none. Events of one moment are one step. */
static qint64 momentAfter(const Journal &journal, qint64 ms)
{
    qint64 nearest = -1;
    for (int kind = 0; kind < Journal::KindCount; ++kind) {
        const QVector<int> &places = journal.ofKind(Journal::Kind(kind));
        const int next = journal.lowerBound(Journal::Kind(kind), ms + 1);
        if (next >= places.size())
            continue;
        const qint64 moment = journal.entries()[places[next]].ms;
        nearest = nearest < 0 ? moment : qMin(nearest, moment);
    }
    return nearest;
}

static qint64 momentBefore(const Journal &journal, qint64 ms)
{
    qint64 nearest = -1;
    for (int kind = 0; kind < Journal::KindCount; ++kind) {
        const int next = journal.lowerBound(Journal::Kind(kind), ms);
        if (next > 0)
            nearest =
                qMax(nearest, journal.entries()[journal.ofKind(Journal::Kind(kind))[next - 1]].ms);
    }
    return nearest;
}

/** On a rewound screen to the next event of the journal, and from its last one to live. */
void DriveCommands::stepToNext()
{
    if (!m_rewind->isActive()) {
        m_transport->stepToNext();
        return;
    }
    const qint64 next = momentAfter(*m_session->journal(), m_rewind->momentMs());
    if (next >= 0)
        m_rewind->show(next);
    else
        m_rewind->end();
}

void DriveCommands::stepToPrevious()
{
    if (!m_session)
        return;
    const qint64 now = m_rewind->isActive() ? m_rewind->momentMs() : m_session->nowMs();
    const qint64 previous = momentBefore(*m_session->journal(), now);
    if (previous >= 0)
        m_rewind->show(previous);
}
