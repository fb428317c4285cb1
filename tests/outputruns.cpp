#include "live/canlog.h"
#include "mem/settingsfunc.h"
#include "outputfile.h"
#include "recording.h"
#include "recordingtools.h"
#include "report/scenarioreport.h"
#include "results.h"
#include "scenario/suitereport.h"
#include "tools/picturefile.h"

#include <QDir>
#include <QImage>
#include <QJsonObject>

#include <cstdio>

/*
 * Writes one kind of output in a folder, for the tests of what becomes of it on a failing disk:
 * norda-output-runs KIND FOLDER. Exit code 1 and a line on standard error for a failure.
 */

static QString record(const QDir &folder)
{
    QString error;
    module::RecordingWriter writer(folder.filePath("result"), "test", &error);
    for (int ms = 0; ms < 4; ++ms)
        writer.writeSignal(ms, "doorStatus", {QVariant::fromValue(uchar(ms))});
    writer.finish(4);
    return writer.hasFailed() ? writer.takeNotice() : error;
}

static QString canLog(const QDir &folder)
{
    module::CanLog log(folder.filePath("result"), {});
    for (int second = 1; second < 4; ++second) {
        log.add(second * 1000000, {0x7E8, false, QByteArray::fromHex("04410c1af8")});
        log.flush();
    }
    log.finish();
    return log.error();
}

static QString cut(const QDir &folder)
{
    QString error;
    module::cutRecording(folder.filePath("source"), 1, 3, folder.filePath("result"), &error);
    return error;
}

static QString summary(const QDir &folder)
{
    QString error;
    writeSummary(folder.filePath("result"), {{"signalsTotal", 3}}, {}, &error);
    return error;
}

static QString junit(const QDir &folder)
{
    QString error;
    writeJUnit(folder.filePath("result"), {ScenarioResult()}, {}, &error);
    return error;
}

static QString report(const QDir &folder)
{
    QString error;
    output::writeResult(folder.filePath("result"), pageOf(QVector<ScenarioResult>(1)), {}, &error);
    return error;
}

static QString picture(const QDir &folder)
{
    QImage image(16, 16, QImage::Format_RGB32);
    image.fill(Qt::red);
    QString error;
    writePicture(folder.filePath("result"), image, {}, &error);
    return error;
}

static QString saveSetting(const QDir &folder)
{
    qputenv("NORDA_HOST_ROOT", folder.path().toLocal8Bit());
    mem::SettingsFunc *settings = mem::SettingsFunc::instance();
    settings->setValue("Camera_ISRear", false, true, true);
    QFile file(folder.filePath("media/flash/nvm/settings.ini"));
    const bool isSaved =
        file.open(QIODevice::ReadOnly) && file.readAll().contains("Camera_ISRear=true");
    return isSaved ? QString() : QStringLiteral("the setting is lost");
}

struct Run
{
    const char *kind;
    QString (*write)(const QDir &);
};

static constexpr Run runs[] = {
    {"recording", record},     {"can-log", canLog}, {"cut", cut},
    {"summary", summary},      {"junit", junit},    {"picture", picture},
    {"settings", saveSetting}, {"report", report},
};

int main(int argc, char *argv[])
{
    QString error = QStringLiteral("expected a kind of output and a folder");
    for (const Run &run : runs) {
        if (argc == 3 && qstrcmp(argv[1], run.kind) == 0)
            error = run.write(QDir(QFile::decodeName(argv[2])));
    }
    if (!error.isEmpty())
        std::fprintf(stderr, "%s\n", qPrintable(error));
    return error.isEmpty() ? 0 : 1;
}
