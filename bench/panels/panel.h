#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

class Session;

/**
 * A panel beside the screen. It refreshes up to four times a second while the session changes, and
 * never while it is hidden.
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
    /** The session has changed or the panel has been shown; session() is not null. */
    virtual void refresh() = 0;
    void showEvent(QShowEvent *event) override;

private:
    void scheduleRefresh();

    QPointer<Session> m_session;
    QTimer m_timer;
};
