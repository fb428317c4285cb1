#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

class QLabel;
class QPlainTextEdit;
class Screen;
class Session;

/** Tells what the plugin was sent and what it sent back. */
class SidePanel : public QWidget
{
    Q_OBJECT
public:
    explicit SidePanel(Screen *screen, QWidget *parent = nullptr);

    void setSession(Session *session);

private:
    void noteCall(const QString &operation, const QVariantList &arguments);
    void refresh();

    Screen *m_screen;
    QPointer<Session> m_session;
    QLabel *m_counters;
    QLabel *m_findings;
    QPlainTextEdit *m_calls;
    QStringList m_newCalls;
    QTimer m_refresh;
};
