#include "program/lastpage.h"

#include "pages.h"
#include "unitsettings.h"
#include "windowstack.h"

#include <QTimer>

LastPage::LastPage(WindowStack *windows, QObject *parent) : QObject(parent)
{
    connect(windows, &WindowStack::windowOpened, this, &LastPage::onOpened);
}

LastPage::~LastPage() = default;

int LastPage::pageToOpen(int usual)
{
    const QStringList kept = unitsettings::lastPage().split(QLatin1Char(' '));
    const int page = kept.value(0).toInt();
    const int starts = kept.value(1).toInt();
    if (!pageWith(&Page::window, page) || starts < 0 || starts >= MostStarts)
        return usual;
    m_page = page;
    m_starts = starts + 1;
    keep(); // before it can do any harm
    return page;
}

/** Kept once it is on the screen: a page that fails earlier is never the last one. */
void LastPage::onOpened(int page)
{
    m_settling.start(SettledAfterMs, this);
    if (page == m_page)
        return;
    m_page = page;
    m_starts = 1;
    QTimer::singleShot(0, this, &LastPage::keep);
}

void LastPage::timerEvent(QTimerEvent *)
{
    settle();
}

void LastPage::settle()
{
    m_settling.stop();
    if (m_starts == 0)
        return;
    m_starts = 0;
    keep();
}

/** In one value, which is written in one step. */
void LastPage::keep() const
{
    unitsettings::keepLastPage(m_starts > 0 ? QStringLiteral("%1 %2").arg(m_page).arg(m_starts)
                                            : QString::number(m_page));
}
