#include "candump.h"
#include "linereader.h"
#include "obdcsv.h"
#include "recordedmodule.h"
#include "recording.h"
#include "samplesource.h"
#include "simulator/simulatedcar.h"
#include "vehiclesource.h"

namespace module {

enum class FileKind { Csv, Candump, Recording };

// A log may begin with damaged lines, so a few are checked.
static FileKind kindOf(const QString &path, QString *error)
{
    static constexpr int linesChecked = 10;
    LineReader lines(path, error);
    QByteArray line;
    while (lines.isOpen() && lines.lineNumber() < linesChecked && lines.next(&line)) {
        if ((lines.lineNumber() == 1 && isRecordingHeader(line)) || isRecordingLine(line))
            return FileKind::Recording;
        if (parseCandumpLine(line))
            return FileKind::Candump;
    }
    return FileKind::Csv;
}

static std::unique_ptr<VehicleSource> play(std::optional<SampleLog> log)
{
    if (!log)
        return nullptr;
    return std::make_unique<RecordedModule>(std::make_unique<SampleSource>(*std::move(log)),
                                            RecordedModule::Answers::New);
}

static std::unique_ptr<VehicleSource> play(std::unique_ptr<RecordingSource> recording)
{
    if (!recording)
        return nullptr;
    return std::make_unique<RecordedModule>(std::move(recording), RecordedModule::Answers::Repeats);
}

/** No car: the module emits only what the user of the bench sends. */
class EmptySource : public VehicleSource
{
public:
    QString title() const override { return QStringLiteral("No car"); }
    qint64 durationMs() const override { return -1; }
    qint64 nextDueMs() const override { return -1; }
    Emission take() override { return {}; }
    void seek(qint64) override {}
    QJsonObject statistics() const override { return {{"kind", "none"}}; }
};

std::unique_ptr<VehicleSource> openSource(const QString &name, QString *error, Trim trim)
{
    if (name == QLatin1String("simulator"))
        return std::make_unique<SimulatedCar>(trim);
    if (name == QLatin1String("none"))
        return std::make_unique<EmptySource>();
    const FileKind kind = kindOf(name, error);
    if (!error->isEmpty())
        return nullptr;
    switch (kind) {
    case FileKind::Recording:
        return play(RecordingSource::open(name, error));
    case FileKind::Candump:
        return play(readCandump(name, error));
    case FileKind::Csv:
        return play(readObdCsv(name, error));
    }
    return nullptr;
}

} // namespace module
