#pragma once

#include <QObject>
#include <QPointer>

class Actions;
class Commands;
class Rewind;
class Session;
class TransportBar;

/** The commands that play, step and repeat the drive, and that rewind the screen. */
class DriveCommands : public QObject
{
    Q_OBJECT
public:
    DriveCommands(const Commands *commands, Actions *actions, TransportBar *transport,
                  Rewind *rewind);

    void setSession(Session *session);

private:
    void togglePlaying();
    void stepToNext();
    void stepToPrevious();

    QPointer<Session> m_session;
    TransportBar *m_transport;
    Rewind *m_rewind;
};
