#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

class Session;

/**
 * A panel beside the screen. It looks at the session again a few times a second while something
 * happens, and never while it is hidden or nothing does.
 */
class Panel : public QWidget
{
    Q_OBJECT
public:
    explicit Panel(QWidget *parent = nullptr);
    ~Panel() override;

    virtual void setSession(Session *session);

protected:
    Session *session() const;
    /** The session has gone on, or the panel has come to be seen. There is a session. */
    virtual void refresh() = 0;
    void showEvent(QShowEvent *event) override;

private:
    void wake();

    QPointer<Session> m_session;
    QTimer m_timer;
};
