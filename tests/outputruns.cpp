#include "mem/settingsfunc.h"
#include "outputfile.h"
#include "recording.h"
#include "recordingtools.h"

#include <QDir>

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

static QString cut(const QDir &folder)
{
    QString error;
    module::cutRecording(folder.filePath("source"), 1, 3, folder.filePath("result"), &error);
    return error;
}

static QString writeResult(const QDir &folder)
{
    QString error;
    output::writeResult(folder.filePath("result"), "a summary\n", {}, &error);
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
    {"recording", record},
    {"cut", cut},
    {"result", writeResult},
    {"settings", saveSetting},
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
