#pragma once

#include "inputfiles.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>

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
    /** Tells which files the bench uses: no file that a panel writes replaces one of them. */
    void setFilesInUse(const std::function<output::InputFiles()> &files) { m_files = files; }
    output::InputFiles filesInUse() const;

protected:
    Session *session() const;
    /** The session has changed or the panel has been shown; session() is not null. */
    virtual void refresh() = 0;
    void showEvent(QShowEvent *event) override;
    void scheduleRefresh();

private:
    QPointer<Session> m_session;
    std::function<output::InputFiles()> m_files;
    QTimer m_timer;
};
