#include "window/filecommands.h"

#include "live/liveports.h"
#include "options.h"
#include "outputfile.h"
#include "report/drivecollector.h"
#include "scenario/scenariowriter.h"
#include "session/rig.h"
#include "tools/picturefile.h"
#include "window/cardialogs.h"

#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

FileCommands::FileCommands(const Options &options, Rig *rig, QWidget *window)
    : QObject(window), m_options(options), m_rig(rig), m_window(window)
{
}

output::InputFiles FileCommands::filesInUse() const
{
    output::InputFiles files = m_options.filesInUse();
    files.add(m_rig->setup().source);
    if (const module::RecordingWriter *recording = m_rig->session()->recording())
        files.add(recording->path());
    return files;
}

void FileCommands::chooseDrive()
{
    const QString file = QFileDialog::getOpenFileName(
        m_window, tr("Open a drive"), QString(), tr("Drives (*.csv *.log *.jsonl);;All files (*)"));
    if (!file.isEmpty())
        openDrive(file);
}

void FileCommands::chooseCar()
{
    const QString name = askForCar(m_window);
    if (!name.isEmpty())
        openDrive(name);
}

/** At unlimited speed the drive would be over before anything of it was seen. */
void FileCommands::openDrive(const QString &source)
{
    emit opens();
    QString error;
    while (!m_rig->openDrive(source, &error)) {
        if (!reportUnusable(source, error))
            return;
        error.clear();
    }
    module::Drive *drive = m_rig->session()->drive();
    if (drive->speed() == module::Drive::Unlimited)
        drive->setSpeed(1);
    emit opened(source);
    emit recordingChanged(); // a recording continues
    drive->play();
}

/** @return whether to try again */
bool FileCommands::reportUnusable(const QString &source, const QString &error)
{
    if (module::isLiveName(source))
        return isTriedAgain(m_window, error);
    QMessageBox::warning(m_window, tr("Open a drive"), error);
    return false;
}

void FileCommands::chooseScenario()
{
    const QString file = QFileDialog::getSaveFileName(
        m_window, tr("Save the session as a scenario"), QStringLiteral("session.scenario"),
        tr("Scenarios (*.scenario)"));
    QString error;
    if (!file.isEmpty() && !saveScenario(file, &error))
        QMessageBox::warning(m_window, tr("Save the session as a scenario"), error);
}

/** What the session can be driven by again, from any folder. */
static Setup repeatableSetup(Setup setup)
{
    if (module::isLiveName(setup.source))
        setup.source = setup.live.log;
    if (!QFileInfo(setup.source).isFile() || !module::isCandumpLog(setup.source))
        setup.car = {};
    for (QString *file : {&setup.source, &setup.car.dbc, &setup.car.map}) {
        if (QFileInfo(*file).isFile())
            *file = QFileInfo(*file).absoluteFilePath();
    }
    return setup;
}

bool FileCommands::saveScenario(const QString &file, QString *error) const
{
    const Setup setup = repeatableSetup(m_rig->setup());
    if (setup.source.isEmpty()) {
        *error =
            tr("%1: expected a car that is connected with --log-can, whose log is driven again")
                .arg(file);
        return false;
    }
    const QString text =
        scenarioOf(m_rig->session()->journal(), setup, QFileInfo(file).completeBaseName());
    return output::writeResult(file, text.toUtf8(), filesInUse(), error);
}

void FileCommands::chooseReport(const PictureTrail &trail)
{
    const QString file = QFileDialog::getSaveFileName(
        m_window, tr("Save a report"), QStringLiteral("report.html"), tr("Web pages (*.html)"));
    QString error;
    if (!file.isEmpty() && !saveReport(file, trail, &error))
        QMessageBox::warning(m_window, tr("Save a report"), error);
}

bool FileCommands::saveReport(const QString &file, const PictureTrail &trail, QString *error) const
{
    return output::writeResult(file, pageOf(reportOn(m_rig, trail)), filesInUse(), error);
}

void FileCommands::toggleRecording()
{
    if (m_rig->session()->recording()) {
        stopRecording();
        return;
    }
    const QString file = QFileDialog::getSaveFileName(
        m_window, tr("Record to"), QStringLiteral("recording.jsonl"), tr("Recordings (*.jsonl)"));
    QString error;
    if (!file.isEmpty() && !startRecording(file, &error))
        QMessageBox::warning(m_window, tr("Record to"), error);
}

bool FileCommands::startRecording(const QString &file, QString *error)
{
    const bool hasBegun = m_rig->startRecording(file, error);
    if (hasBegun)
        emit noticed(tr("Recording to %1").arg(file));
    emit recordingChanged();
    return hasBegun;
}

void FileCommands::stopRecording()
{
    const bool hasFailed = m_rig->session()->hasRecordingFailed();
    const QString file = m_rig->session()->stopRecording();
    if (!file.isEmpty() && !hasFailed)
        emit noticed(tr("Recorded to %1").arg(file));
    emit recordingChanged();
}

QString FileCommands::savePicture(const QString &folder)
{
    const QString now =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    QString file = QDir(folder).filePath(QStringLiteral("norda-%1.png").arg(now));
    QString error;
    if (!writePicture(file, m_rig->unit()->screen()->grab().toImage(), filesInUse(), &error)) {
        QMessageBox::warning(m_window, tr("Save a picture"), error);
        return {};
    }
    emit noticed(tr("Saved %1").arg(file));
    return file;
}
