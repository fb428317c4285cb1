// Files of any content as recorded drives: OBD-II exports, candump logs, recordings. What opens is
// looked at, sought in and played; what is a recording is cut in two and compared.

#include "inputfile.h"
#include "playback.h"
#include "recordingtools.h"

static InputFile *file;

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    file = new InputFile(argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString path = file->hold(data, size);

    QString error;
    QStringList report;
    const QString part = path + QStringLiteral(".part");
    if (module::cutRecording(path, 1000, 2000, part, &error) &&
        module::compareRecordings(part, part, &report, &error) != module::Comparison::Identical)
        std::abort(); // a part is a recording, and like itself
    QFile::remove(part);
    error.clear();
    const auto source = module::openSource(path, &error);
    if (!source) {
        if (error.isEmpty() || error.contains(QLatin1Char('\n')))
            std::abort(); // one line says what is wrong
        return 0;
    }
    playBack(source.get());
    return 0;
}
