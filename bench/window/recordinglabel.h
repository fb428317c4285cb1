#pragma once

#include <QLabel>
#include <QPointer>
#include <QTimer>

class Session;

/** How long and how large the recording is, while there is one. */
class RecordingLabel : public QLabel
{
    Q_OBJECT
public:
    explicit RecordingLabel(QWidget *parent = nullptr);

    void setSession(Session *session);
    /** A recording has begun or ended. */
    void refresh();

private:
    QPointer<Session> m_session;
    QTimer m_tick;
};
