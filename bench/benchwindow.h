#pragma once

#include "scenariowriter.h"

#include <QMainWindow>

#include <memory>

class AudioStage;
class FingerWatch;
class HeadUnit;
class LookBack;
class Operator;
class Screen;
class Session;
class TransportBar;
struct Options;

/** The bench on a desktop: the head unit's screen, the transport strip and the panels beside it. */
class BenchWindow : public QMainWindow
{
    Q_OBJECT
public:
    BenchWindow(const Options &options, Screen *screen, HeadUnit *unit, AudioStage *stage);
    ~BenchWindow() override;

    /** Drives a source from its start. */
    void start(std::unique_ptr<Session> session);
    /** Drives a file instead. One that cannot be used is reported in a box and changes nothing. */
    void openDrive(const QString &file);
    Session *session() const { return m_session.get(); }
    /** Writes what was done by hand as a scenario. @param error  one line that names the file */
    bool saveScenario(const QString &file, QString *error) const;
    /** Pictures of the bench with each of its panels. @param error  one line that names the file */
    bool writePictures(const QString &folder, QString *error);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void lead(std::unique_ptr<Session> session);
    void replayBeginning();
    QDockWidget *addDock(const QString &name, const QString &title, QWidget *panel,
                         Qt::DockWidgetArea area);
    void makeDocks();
    void makeFileMenu();
    void makePageMenu();
    void makePanelsMenu();
    void makeDeveloperMenu();
    void togglePlaying();
    void chooseDrive();
    void chooseScenario();
    void onFinished();

    const Options &m_options;
    Screen *m_screen;
    HeadUnit *m_unit;
    AudioStage *m_stage;
    Operator *m_hand;
    FingerWatch *m_fingers;
    LookBack *m_lookBack;
    TransportBar *m_transport;
    QList<QDockWidget *> m_docks;
    SessionStart m_start;
    std::unique_ptr<Session> m_session;
};
