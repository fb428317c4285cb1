#pragma once

#include <QObject>
#include <QPointer>

class QMenu;
class Session;

/** The marks of the session, in a menu. */
class Bookmarks : public QObject
{
    Q_OBJECT
public:
    explicit Bookmarks(QMenu *menu);

    void setSession(Session *session);
    /** Marks the moment that is shown. */
    void add();

signals:
    void momentRequested(qint64 ms);

private:
    void fill();

    QMenu *m_menu;
    QPointer<Session> m_session;
};
