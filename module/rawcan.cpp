#include "rawcan.h"

#include "candump.h"
#include "dbc/framedecoder.h"
#include "driveclock.h"
#include "linereader.h"
#include "mapcheck.h"

#include <QFileInfo>

namespace module {

/** Collects the values of a log. */
class RawCanReader
{
public:
    RawCanReader(const SignalMap &map, const Dbc &dbc, const SignalBinding &binding)
        : m_dbc(dbc), m_decoder(map, dbc, binding), m_quantities(shownQuantities(map, binding))
    {
        for (const int entry : binding.missing)
            m_log.remarks.append(missingSignal(map.entries().at(entry)));
        m_log.remarks += binding.remarks;
    }

    void read(const LoggedFrame &frame);
    int frames() const { return m_frames; }
    SampleLog take(const QString &path, int badLines);

private:
    static constexpr qint64 watchMs = 100; // between two searches for what is missing

    void watch(qint64 nowMs);
    void add(qint64 atMs, const QVector<PathValue> &values);

    SampleLog m_log;
    const Dbc &m_dbc;
    FrameDecoder m_decoder;
    QVector<Quantity> m_quantities; // by the map's entry
    DriveClock m_clock;
    qint64 m_watchedMs = 0;
    int m_frames = 0;
    int m_knownFrames = 0;
};

void RawCanReader::read(const LoggedFrame &frame)
{
    m_clock.at(double(frame.timeUs) / 1000.0);
    const qint64 nowMs = m_clock.nowMs();
    watch(nowMs);
    ++m_frames;
    m_knownFrames += m_dbc.indexOf(frame.id) >= 0;
    const auto *bytes = reinterpret_cast<const quint8 *>(frame.data.constData());
    add(nowMs, m_decoder.decode(nowMs, frame.id, bytes, frame.data.size()));
}

/** Also while the whole bus is silent, for a day perhaps. */
void RawCanReader::watch(qint64 nowMs)
{
    if (nowMs < m_watchedMs + watchMs)
        return;
    m_watchedMs = nowMs - nowMs % watchMs;
    for (qint64 expectedMs = m_decoder.nextExpectedMs(); expectedMs < m_watchedMs;
         expectedMs = m_decoder.nextExpectedMs()) {
        const qint64 missedMs = expectedMs - expectedMs % watchMs + watchMs;
        add(missedMs, m_decoder.missing(missedMs));
    }
}

void RawCanReader::add(qint64 atMs, const QVector<PathValue> &values)
{
    for (const PathValue &path : values) {
        const Quantity quantity = m_quantities.at(path.entry);
        if (quantity == Quantity::Count)
            continue;
        const auto value = quantityValue(quantity, path.value);
        if (value)
            m_log.add(atMs, quantity, *value);
        else if (path.value.isValid())
            ++m_log.droppedValues;
        else
            m_log.addMissing(atMs, quantity);
    }
}

SampleLog RawCanReader::take(const QString &path, int badLines)
{
    m_log.title = QFileInfo(path).fileName();
    m_log.durationMs = m_clock.nowMs();
    m_log.badLines = badLines;
    m_log.details = {{"kind", "rawcan"},
                     {"frames", m_frames},
                     {"knownFrames", m_knownFrames},
                     {"irregularSteps", m_clock.irregularSteps()}};
    m_log.remarks.append(QStringLiteral("%1 frames, of which the DBC file knows %2")
                             .arg(m_frames)
                             .arg(m_knownFrames));
    return m_log;
}

static std::optional<SampleLog> readLog(const QString &path, RawCanReader *reader, QString *error)
{
    LineReader lines(path, error);
    if (!lines.isOpen())
        return std::nullopt;
    QByteArray line;
    int badLines = 0;
    while (lines.next(&line)) {
        if (line.trimmed().isEmpty() && !lines.wasTooLong())
            continue;
        if (const auto frame = parseCandumpLine(line))
            reader->read(*frame);
        else
            ++badLines;
    }
    SampleLog log = reader->take(path, badLines);
    if (!log.samples.isEmpty())
        return log;
    *error = QStringLiteral("%1: line %2: expected frames that the DBC file and the map turn into "
                            "values for the pages, found none in %3 frames and %4 damaged lines")
                 .arg(path)
                 .arg(lines.lineNumber())
                 .arg(reader->frames())
                 .arg(badLines);
    return std::nullopt;
}

std::optional<SampleLog> readRawCan(const QString &path, const CarFiles &car, QString *error)
{
    const auto dbc = Dbc::read(car.dbc, error);
    const auto map = dbc ? SignalMap::read(car.map, error) : std::nullopt;
    if (!map)
        return std::nullopt;
    const SignalBinding binding = bindSignals(*map, *dbc);
    if (binding.links.isEmpty()) { // a map for another car
        *error = QStringLiteral("%1: %2").arg(
            car.map, missingSignal(map->entries().at(binding.missing.constFirst())));
        return std::nullopt;
    }
    RawCanReader reader(*map, *dbc, binding);
    return readLog(path, &reader, error);
}

} // namespace module
