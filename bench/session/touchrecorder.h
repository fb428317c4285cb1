#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QWidget>

class Screen;
class Session;

/** Notes every touch of the screen in the session's journal, in the words of a scenario. */
class TouchRecorder : public QObject
{
    Q_OBJECT
public:
    explicit TouchRecorder(Screen *screen, QObject *parent = nullptr);

    void setSession(Session *session);

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /** A finger came down on what is past; the page does not feel it. */
    void pastTouched();

private:
    void note(const QString &word, const QVariantList &arguments);

    Screen *m_screen;
    QPointer<Session> m_session;
    QPointer<QWidget> m_pressed;
    QPoint m_at; // on the screen
};
