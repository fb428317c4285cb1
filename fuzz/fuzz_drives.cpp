// Files of any content as recorded drives: OBD-II exports, candump logs, recordings. What opens is
// looked at, sought in and played; what is a recording is cut in two and compared.

#include "adaptorlink.h"
#include "fuzzinput.h"
#include "recordingtools.h"
#include "vehiclesource.h"

#include <QCoreApplication>
#include <QTemporaryFile>

static QTemporaryFile *file;

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    new QCoreApplication(*argc, *argv);
    file = new QTemporaryFile;
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return file->open() ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static constexpr int mostEmissions = 2000;
    file->resize(0);
    file->seek(0);
    file->write(reinterpret_cast<const char *>(data), qint64(size));
    file->flush();

    QString error;
    QStringList report;
    const QString part = file->fileName() + QStringLiteral(".part");
    if (module::cutRecording(file->fileName(), 1000, 2000, part, &error) &&
        module::compareRecordings(part, part, &report, &error) != module::Comparison::Alike)
        std::abort(); // a part is a recording, and like itself
    QFile::remove(part);
    error.clear();
    const auto source = module::openSource(file->fileName(), &error);
    if (!source) {
        if (error.isEmpty() || error.contains(QLatin1Char('\n')))
            std::abort(); // one line says what is wrong
        return 0;
    }
    source->findings();
    source->statistics();
    module::AdaptorLink link;
    qint64 last = 0;
    for (const qint64 start : {qint64(0), source->durationMs() / 2, source->durationMs()}) {
        source->seek(start);
        last = start;
        for (int i = 0; i < mostEmissions && source->nextDueMs() >= 0; ++i) {
            if (source->nextDueMs() < last)
                std::abort(); // time does not run backwards
            last = source->nextDueMs();
            if (!link.deliver(source->take()))
                std::abort(); // a source says only what the adaptor knows
        }
    }
    return 0;
}
