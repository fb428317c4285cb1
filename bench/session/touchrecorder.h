#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QWidget>

class Screen;
class Session;

/** Journals and records every touch of the screen, in the words of a scenario. */
class TouchRecorder : public QObject
{
    Q_OBJECT
public:
    explicit TouchRecorder(Screen *screen, QObject *parent = nullptr);

    void setSession(Session *session);

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /** The rewound screen was touched; the page does not get the touch. */
    void rewoundTouched();

private:
    void note(const QString &word, const QVariantList &arguments);

    Screen *m_screen;
    QPointer<Session> m_session;
    QPointer<QWidget> m_pressed;
    QPoint m_at; // on the screen
};
