#pragma once

#include <QObject>
#include <QPointer>

class WindowStack;
class Session;

/**
 * Shows the screen as it was at a moment of the session: the page that was open, and on it what had
 * been said last. The drive stands still meanwhile, and nothing of it is noted. What a touch alone
 * had changed within a page stays as it is now.
 */
class Rewind : public QObject
{
    Q_OBJECT
public:
    explicit Rewind(WindowStack *unit, QObject *parent = nullptr);

    void setSession(Session *session);
    bool isActive() const { return m_isActive; }
    qint64 momentMs() const { return m_momentMs; }

public slots:
    void show(qint64 ms);
    /** Back to where the drive stands; it goes on if it did before. */
    void end();

signals:
    void changed();

private:
    void begin();
    void openPage(int id);
    void bringBack(qint64 ms);

    WindowStack *m_unit;
    QPointer<Session> m_session;
    qint64 m_momentMs = 0;
    int m_presentPage = -1;
    bool m_wasPlaying = false;
    bool m_isActive = false;
};
