#include "window/drivecommands.h"

#include "session/actions.h"
#include "session/rewind.h"
#include "session/session.h"
#include "window/commands.h"
#include "window/repeatedpart.h"
#include "window/transportbar.h"

#include <algorithm>

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

/** Entries of one moment are one step. */
static int entryAfter(const Journal &journal, qint64 ms)
{
    const QVector<Journal::Entry> &entries = journal.entries();
    const auto found = std::upper_bound(
        entries.begin(), entries.end(), ms,
        [](qint64 moment, const Journal::Entry &entry) { return moment < entry.ms; });
    return int(found - entries.begin());
}

/** On a rewound screen to the next event of the journal, and from its last one to live. */
void DriveCommands::stepToNext()
{
    if (!m_rewind->isActive()) {
        m_transport->stepToNext();
        return;
    }
    const Journal &journal = *m_session->journal();
    const int next = entryAfter(journal, m_rewind->momentMs());
    if (next < journal.entries().size())
        m_rewind->show(journal.entries()[next].ms);
    else
        m_rewind->end();
}

void DriveCommands::stepToPrevious()
{
    if (!m_session)
        return;
    const Journal &journal = *m_session->journal();
    const qint64 now = m_rewind->isActive() ? m_rewind->momentMs() : m_session->nowMs();
    const int previous = entryAfter(journal, now - 1) - 1;
    if (previous >= 0)
        m_rewind->show(journal.entries()[previous].ms);
}
