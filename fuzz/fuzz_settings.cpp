// Settings files of any content: read, written, read again. A file that is not understood stays as
// it is, one that is keeps all lines but the written one.

#include "fuzzinput.h"
#include "mem/settingsexe.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

static const QString file = QStringLiteral("/media/flash/nvm/factory/settings.ini");
static QString localFile;

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    new QCoreApplication(*argc, *argv);
    static QTemporaryDir root;
    qputenv("NORDA_HOST_ROOT", root.path().toLocal8Bit());
    localFile = root.path() + file;
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return QDir().mkpath(QFileInfo(localFile).path()) ? 0 : 1;
}

static QByteArray content()
{
    QFile source(localFile);
    return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray before(reinterpret_cast<const char *>(data), int(size));
    {
        QFile target(localFile);
        if (!target.open(QIODevice::WriteOnly) || target.write(before) != before.size())
            return 0;
    }
    mem::SettingsExe saver;
    saver.getValue("CameraInput", file, 7);
    saver.getValue("RearInput", file, true);
    const bool split = saver.getValue("VantiqSplit", file, false);
    if (content() != before)
        std::abort(); // reading changes nothing

    saver.setOtherPathValue("VantiqSplit", file, !split, !split, true);
    const QByteArray after = content();
    if (after == before)
        return 0; // not understood
    if (saver.getValue("VantiqSplit", file, split) == split)
        std::abort(); // what was written is read
    if (after.split('\n').size() < before.split('\n').size())
        std::abort(); // no line is lost
    return 0;
}
