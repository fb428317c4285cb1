#pragma once

#include "inputfiles.h"

#include <QMainWindow>

class TouchRecorder;
class Rewind;
class Rig;
class Actions;
class Session;
class Theme;
class TransportBar;
struct Options;

/** The bench on a desktop: the head unit's screen, the transport bar and the panels. */
class BenchWindow : public QMainWindow
{
    Q_OBJECT
public:
    BenchWindow(const Options &options, Rig *rig);
    ~BenchWindow() override;

    /** Opens the first page and drives the rig's session. */
    void start();
    /** Drives a file instead. An unusable one is reported in a message box and changes nothing. */
    void openDrive(const QString &file);
    /** Writes the session as a scenario. @param error  one line that names the file */
    bool saveScenario(const QString &file, QString *error) const;
    /** Pictures of the bench with each of its panels. @param error  one line that names the file */
    bool writePictures(const QString &folder, QString *error);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    output::InputFiles filesInUse() const;
    void follow(Session *session);
    QDockWidget *addDock(const QString &name, const QString &title, QWidget *panel,
                         Qt::DockWidgetArea area);
    void makeDocks();
    void makeFileMenu();
    void makePageMenu();
    void makePanelsMenu();
    void makeThemeMenu();
    void makeDeveloperMenu();
    void openPage(int id);
    void togglePlaying();
    void chooseDrive();
    void chooseScenario();
    void onFinished();

    const Options &m_options;
    Rig *m_rig;
    Actions *m_actions;
    TouchRecorder *m_touches;
    Rewind *m_rewind;
    TransportBar *m_transport;
    Theme *m_theme;
    QList<QDockWidget *> m_docks;
};
