#include "session/replay.h"

#include "session/actions.h"
#include "session/session.h"

#include <QCoreApplication>

Replay::Replay(Actions *hand, Extent extent, QObject *parent)
    : QObject(parent), m_actions(hand), m_extent(extent)
{
    const module::Drive *drive = hand->session()->drive();
    connect(drive, &module::Drive::actionDue, this, &Replay::perform);
    connect(drive, &module::Drive::jumped, this, &Replay::stop);
}

Replay::~Replay() = default;

/** Somebody else leads the drive from here on. */
void Replay::stop()
{
    m_actions->session()->drive()->disconnect(this);
}

void Replay::perform(const QString &word, const QVariantList &arguments)
{
    static constexpr int mostLines = 10; // the first ones tell what is wrong
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
    QCoreApplication::sendPostedEvents(); // what an action finds, it found laid out
    const bool isDone = m_actions->repeat(word, arguments, &error);
    QCoreApplication::sendPostedEvents(); // a touch opens a page by an event of the application
    emit performed();
    if (!isDone && m_failures++ < mostLines)
        emit failed(QStringLiteral("%1 s: %2: %3")
                        .arg(double(session->drive()->positionMs()) / 1000)
                        .arg(word, error));
}
