#include "window/bookmarks.h"

#include "panels/panelparts.h"
#include "session/session.h"

#include <QMenu>

Bookmarks::Bookmarks(QMenu *menu) : QObject(menu), m_menu(menu)
{
    connect(menu, &QMenu::aboutToShow, this, &Bookmarks::fill);
    fill();
}

void Bookmarks::setSession(Session *session)
{
    m_session = session;
}

void Bookmarks::add()
{
    if (m_session)
        m_session->addMark(tr("Bookmark %1").arg(m_session->journal()->count(Journal::Mark) + 1));
}

void Bookmarks::fill()
{
    m_menu->clear();
    const Journal *journal = m_session ? m_session->journal() : nullptr;
    for (const int place : journal ? journal->ofKind(Journal::Mark) : QVector<int>()) {
        const Journal::Entry &entry = journal->entries()[place];
        m_menu->addAction(tr("%1 s  %2").arg(secondsText(entry.ms), journal->nameOf(entry)), this,
                          [this, ms = entry.ms] { emit momentRequested(ms); });
    }
    if (m_menu->isEmpty())
        m_menu->addAction(tr("None yet"))->setEnabled(false);
}
