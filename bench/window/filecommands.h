#pragma once

#include "inputfiles.h"

#include <QObject>

class PictureTrail;
class QWidget;
class Rig;
struct Options;

/** The commands that open and write files, with their dialogs. */
class FileCommands : public QObject
{
    Q_OBJECT
public:
    FileCommands(const Options &options, Rig *rig, QWidget *window);

    // Each of these reports what fails in a message box, in one line.

    void chooseDrive();
    void chooseCar();
    void chooseScenario();
    void chooseReport(const PictureTrail &trail);
    /** Asks for a file and records to it, or ends the recording. */
    void toggleRecording();
    /**
     * Drives a file, or a source by its name. One that cannot be used changes nothing; a car that
     * cannot be reached can be tried again.
     */
    void openDrive(const QString &source);
    /** Saves a picture of the unit's screen with the time as its name. @return its path */
    QString savePicture(const QString &folder);

    /** Writes the session as a scenario. @param error  one line that names the file */
    bool saveScenario(const QString &file, QString *error) const;
    /** Writes a page about the session so far. @param error  one line that names the file */
    bool saveReport(const QString &file, const PictureTrail &trail, QString *error) const;
    /** @param error  one line that names the file */
    bool startRecording(const QString &file, QString *error);
    void stopRecording();

    /** Those of the command line, and the drive that was opened since. */
    output::InputFiles filesInUse() const;

signals:
    /** A drive is about to be opened. */
    void opens();
    void opened(const QString &source);
    /** A recording has begun or ended. */
    void recordingChanged();
    void noticed(const QString &line);

private:
    bool reportUnusable(const QString &source, const QString &error);

    const Options &m_options;
    Rig *m_rig;
    QWidget *m_window;
};
