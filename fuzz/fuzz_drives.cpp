// Files of any content as recorded drives: OBD-II exports, candump logs, recordings. What opens is
// looked at, sought in and played; what is a recording is cut in two and compared.

#include "adaptorlink.h"
#include "inputfile.h"
#include "recordingtools.h"
#include "vehiclesource.h"

static InputFile *file;

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    file = new InputFile(argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static constexpr int mostEmissions = 2000;
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
            const module::Emission emission = source->take();
            if (!emission.isAction && !link.deliver(emission))
                std::abort(); // a source emits only what the adaptor has
        }
    }
    return 0;
}
