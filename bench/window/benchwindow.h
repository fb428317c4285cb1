#pragma once

#include <QMainWindow>

class Actions;
class Commands;
class DriveCommands;
class FileCommands;
class PanelDocks;
class PictureTrail;
class QLabel;
class QToolButton;
class RecordingLabel;
class Rewind;
class Rig;
class ScreenView;
class Session;
class Theme;
class TouchRecorder;
class TransportBar;
class ViewCommands;
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
    FileCommands *files() const { return m_files; }
    /** The pictures for a report. */
    const PictureTrail *pictureTrail() const { return m_trail; }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void layOut();
    void makePanels();
    void showWarnings(int count);
    void connectFileCommands();
    void connectBookmarks();
    void connectPageCommands();
    void connectLanguages();
    void connectDeveloperCommands();
    void follow(Session *session);
    void openPage(int id);
    void notice(const QString &line);
    void onFinished();

    const Options &m_options;
    Rig *m_rig;
    Actions *m_actions;
    TouchRecorder *m_touches;
    Rewind *m_rewind;
    ScreenView *m_view;
    TransportBar *m_transport;
    Theme *m_theme;
    RecordingLabel *m_recording;
    QToolButton *m_warnings;
    QLabel *m_scale;
    Commands *m_commands;
    PanelDocks *m_panels;
    PictureTrail *m_trail;
    FileCommands *m_files;
    DriveCommands *m_drive;
    ViewCommands *m_viewCommands = nullptr;
    bool m_isAlone = false; ///< the screen, without panels and bars
    bool m_hasBeenShown = false;
};
