#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

class QLabel;
class Screen;
class Session;

/** Tells what is being driven, and how much has crossed the adaptor. */
class SidePanel : public QWidget
{
    Q_OBJECT
public:
    explicit SidePanel(Screen *screen, QWidget *parent = nullptr);

    void setSession(Session *session);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void refresh();

    Screen *m_screen;
    QPointer<Session> m_session;
    QLabel *m_counters;
    QLabel *m_findings;
    QTimer m_refresh;
};
