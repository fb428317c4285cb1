#include "session/rewind.h"

#include "adaptorlink.h"
#include "metacall.h"
#include "norda/vtqadaptor.h"
#include "pages.h"
#include "session/journalsnapshot.h"
#include "session/session.h"
#include "windowstack.h"

Rewind::Rewind(WindowStack *windows, QObject *parent) : QObject(parent), m_windows(windows) {}

void Rewind::setSession(Session *session)
{
    m_session = session;
    m_isActive = false;
    emit changed();
}

void Rewind::begin()
{
    m_wasPlaying = m_session->drive()->isPlaying();
    m_livePage = m_windows->currentWindow();
    m_session->drive()->pause();
    m_isActive = true;
}

void Rewind::show(qint64 ms)
{
    if (!m_session)
        return;
    if (!m_isActive)
        begin();
    m_momentMs = ms;
    m_session->setRewound(ms);
    const Journal *journal = m_session->journal();
    const int place = journal->lowerBound(Journal::Page, ms + 1) - 1;
    if (place >= 0) {
        const int entry = journal->ofKind(Journal::Page)[place];
        openPage(journal->entries()[entry].arguments.value(0).toInt());
    }
    sendSnapshot(ms);
    emit changed();
}

void Rewind::end()
{
    if (!m_session || !m_isActive)
        return;
    openPage(m_livePage);
    sendSnapshot(m_session->nowMs());
    m_isActive = false;
    m_session->setLive();
    if (m_wasPlaying)
        m_session->drive()->play();
    emit changed();
}

void Rewind::openPage(int id)
{
    m_windows->openWindow(id);
    // Rows that the menu page does not fill would remain.
    if (id == SettingsPage)
        m_windows->recreateWindow();
}

/** The last signals up to a moment, in their order. */
void Rewind::sendSnapshot(qint64 ms)
{
    const Journal *journal = m_session->journal();
    const QVector<int> state = snapshotOf(*journal, ms);
    for (const int place : state) {
        const Journal::Entry &entry = journal->entries()[place];
        const module::ModuleSignal signal = module::moduleSignal(journal->nameOf(entry).toLatin1());
        // Audio notices would play again; sound is not part of the screen.
        if (signal.emitter != norda::VtqAdaptor::instance())
            continue;
        bus::invokeMethod(signal.emitter, signal.method, entry.arguments);
    }
}
