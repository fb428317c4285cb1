#pragma once

#include "panels/panel.h"

class QGridLayout;
class QLabel;
class QTextBrowser;
class Screen;

/** The source of the drive with what it holds and lacks, and how much has crossed the adaptor. */
class DrivePanel : public Panel
{
    Q_OBJECT
public:
    explicit DrivePanel(Screen *screen, QWidget *parent = nullptr);

    void setSession(Session *session) override;

protected:
    void refresh() override;
    void changeEvent(QEvent *event) override;

private:
    QLabel *addCounter(QGridLayout *grid, const QString &name, const QString &title);
    void showFindings();
    void refreshFindings();

    Screen *m_screen;
    QTextBrowser *m_findings;
    QTimer m_liveTimer;
    qint64 m_findingsMs = 0; // of a car that is connected, when they were shown
    QLabel *m_signals;
    QLabel *m_calls;
    QLabel *m_beeps;
    QLabel *m_frames;
};
