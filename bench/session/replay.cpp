#include "session/replay.h"

#include "session/actions.h"
#include "session/session.h"

#include <QCoreApplication>

Replay::Replay(Actions *actions, Extent extent, QObject *parent)
    : QObject(parent), m_actions(actions), m_extent(extent)
{
    const module::Drive *drive = actions->session()->drive();
    connect(drive, &module::Drive::actionDue, this, &Replay::perform);
    connect(drive, &module::Drive::jumped, this, &Replay::stop);
}

Replay::~Replay() = default;

/** After a jump, recorded actions no longer fit the drive. */
void Replay::stop()
{
    m_actions->session()->drive()->disconnect(this);
}

void Replay::perform(const QString &word, const QVariantList &arguments)
{
    static constexpr int mostLines = 10; // further failures are of the same kind
    Session *session = m_actions->session();
    if (m_extent == Beginning && session->drive()->positionMs() > 0) {
        stop();
        return;
    }
    if (word == QLatin1String(module::beginAction)) {
        session->recordAction(word, arguments);
        return;
    }
    QString error;
    QCoreApplication::sendPostedEvents(); // the layout is as it was when recorded
    const bool isDone = m_actions->repeat(word, arguments, &error);
    QCoreApplication::sendPostedEvents(); // a touch opens a page with a posted event
    emit performed(word, arguments);
    if (!isDone && m_failures++ < mostLines)
        emit failed(QStringLiteral("%1 s: %2: %3")
                        .arg(double(session->drive()->positionMs()) / 1000)
                        .arg(word, error));
}
