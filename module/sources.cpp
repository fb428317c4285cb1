#include "candump.h"
#include "linereader.h"
#include "live/liveports.h"
#include "obdcsv.h"
#include "rawcan.h"
#include "recordedmodule.h"
#include "recording.h"
#include "samplesource.h"
#include "service/remotesource.h"
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

bool isCandumpLog(const QString &file)
{
    QString error;
    return kindOf(file, &error) == FileKind::Candump && error.isEmpty();
}

static std::optional<SampleLog> readLog(FileKind kind, const QString &path, const CarFiles &car,
                                        QString *error)
{
    if (kind == FileKind::Csv)
        return readObdCsv(path, error);
    return car.isEmpty() ? readCandump(path, error) : readRawCan(path, car, error);
}

std::optional<SampleLog> readSamples(const QString &path, const CarFiles &car, QString *error)
{
    const FileKind kind = kindOf(path, error);
    if (!error->isEmpty())
        return std::nullopt;
    if (kind != FileKind::Recording)
        return readLog(kind, path, car, error);
    *error = QStringLiteral("%1: expected an OBD-II CSV export or a candump log, found a recording "
                            "of the bench, which holds no measured values")
                 .arg(path);
    return std::nullopt;
}

static std::unique_ptr<VehicleSource> openFile(const QString &path, const CarFiles &car,
                                               QString *error)
{
    const FileKind kind = kindOf(path, error);
    if (!error->isEmpty())
        return nullptr;
    if (!car.isEmpty() && kind != FileKind::Candump) {
        *error = QStringLiteral("%1: expected a candump log with --dbc and --map").arg(path);
        return nullptr;
    }
    if (kind == FileKind::Recording)
        return play(RecordingSource::open(path, error));
    return play(readLog(kind, path, car, error));
}

static std::unique_ptr<VehicleSource> play(std::unique_ptr<VehicleSource> live)
{
    if (!live)
        return nullptr;
    return std::make_unique<RecordedModule>(std::move(live), RecordedModule::Answers::New);
}

std::unique_ptr<VehicleSource> openSource(const QString &name, QString *error, Trim trim,
                                          const CarFiles &car, const LiveSettings &live)
{
    if (car.map.isEmpty() != car.dbc.isEmpty()) {
        *error = QStringLiteral("--dbc: expected with --map, got it alone");
        return nullptr;
    }
    if (isLiveName(name))
        return play(openLive(name, car, live, error));
    if (isRemoteName(name))
        return openRemote(name, car, error);
    const bool isFile = name != QLatin1String("simulator") && name != QLatin1String("none");
    if (isFile)
        return openFile(name, car, error);
    if (name == QLatin1String("none"))
        return std::make_unique<EmptySource>();
    return std::make_unique<SimulatedCar>(trim);
}

} // namespace module
