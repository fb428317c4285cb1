#pragma once

#include <QObject>
#include <QPointer>

class WindowStack;
class Session;

/**
 * Rewinds the screen to a moment of the session: opens the page of that moment and sends the state
 * snapshot. The drive is paused meanwhile, and nothing is journaled. Changes that only a touch made
 * within a page are not undone.
 */
class Rewind : public QObject
{
    Q_OBJECT
public:
    explicit Rewind(WindowStack *windows, QObject *parent = nullptr);

    void setSession(Session *session);
    bool isActive() const { return m_isActive; }
    qint64 momentMs() const { return m_momentMs; }

public slots:
    void show(qint64 ms);
    /** Returns to live; the drive plays again if it did before. */
    void end();

signals:
    void changed();

private:
    void begin();
    void openPage(int id);
    void sendSnapshot(qint64 ms);

    WindowStack *m_windows;
    QPointer<Session> m_session;
    qint64 m_momentMs = 0;
    int m_livePage = -1;
    bool m_wasPlaying = false;
    bool m_isActive = false;
};
