#include "rawcan.h"

#include "busdecoder.h"
#include "candump.h"
#include "driveclock.h"
#include "linereader.h"
#include "live/obdlink.h"
#include "live/troublecodes.h"
#include "obdpids.h"

#include <QFileInfo>

#include <cmath>

namespace module {

/** Collects the values of a log. */
class RawCanReader
{
public:
    explicit RawCanReader(std::unique_ptr<BusDecoder> decoder) : m_decoder(std::move(decoder)) {}

    void read(const LoggedFrame &frame);
    int frames() const { return m_frames; }
    SampleLog take(const QString &path, int badLines);

private:
    static constexpr qint64 watchMs = 100; // between two searches for what is missing

    void watch(qint64 nowMs);
    void readAnswer(const CanFrame &frame);
    void add(const QVector<Sample> &samples);

    SampleLog m_log;
    std::unique_ptr<BusDecoder> m_decoder;
    QVector<bool> m_isHeard = m_decoder->present(); // by quantity
    TroubleCodeReader m_codes;
    DriveClock m_clock;
    qint64 m_watchedMs = 0;
    int m_frames = 0;
};

void RawCanReader::read(const LoggedFrame &frame)
{
    m_clock.at(double(frame.timeUs) / 1000.0);
    const qint64 nowMs = m_clock.nowMs();
    watch(nowMs);
    ++m_frames;
    add(m_decoder->decode(nowMs, frame.id, frame.data));
    const bool isExtended = (frame.id & LoggedFrame::ExtendedFlag) != 0;
    const CanFrame onBus = {frame.id & ~LoggedFrame::ExtendedFlag, isExtended, frame.data};
    if (isObdAnswer(onBus))
        readAnswer(onBus);
}

/** What was asked, as of a connected car: only where the car does not tell it by itself. */
void RawCanReader::readAnswer(const CanFrame &frame)
{
    static constexpr int mostBytes = 7;
    const int length = frame.data.isEmpty() ? 0 : quint8(frame.data.at(0));
    const auto reading = length <= mostBytes ? pidReading(frame.data.mid(1, length)) : std::nullopt;
    if (reading && !m_isHeard.at(int(reading->quantity)))
        m_log.add(m_clock.nowMs(), reading->quantity, reading->value);
    if (const auto codes = m_codes.read(frame))
        m_log.addCodes(m_clock.nowMs(), *codes);
}

/** Also while the whole bus is silent, for a day perhaps. */
void RawCanReader::watch(qint64 nowMs)
{
    if (nowMs < m_watchedMs + watchMs)
        return;
    m_watchedMs = nowMs - nowMs % watchMs;
    for (qint64 expectedMs = m_decoder->nextExpectedMs(); expectedMs < m_watchedMs;
         expectedMs = m_decoder->nextExpectedMs())
        add(m_decoder->missing(expectedMs - expectedMs % watchMs + watchMs));
}

void RawCanReader::add(const QVector<Sample> &samples)
{
    for (const Sample &sample : samples) {
        if (std::isnan(sample.value))
            m_log.addMissing(sample.atMs, sample.quantity);
        else
            m_log.add(sample.atMs, sample.quantity, double(sample.value));
    }
}

SampleLog RawCanReader::take(const QString &path, int badLines)
{
    m_log.title = QFileInfo(path).fileName();
    m_log.durationMs = m_clock.nowMs();
    m_log.badLines = badLines;
    m_log.droppedValues += m_decoder->droppedValues();
    m_log.details = {{"kind", "rawcan"},
                     {"frames", m_frames},
                     {"knownFrames", m_decoder->knownFrames()},
                     {"irregularSteps", m_clock.irregularSteps()}};
    m_log.remarks = m_decoder->remarks() + m_log.remarks;
    m_log.remarks.append(QStringLiteral("%1 frames, of which the DBC file knows %2")
                             .arg(m_frames)
                             .arg(m_decoder->knownFrames()));
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
    auto decoder = BusDecoder::open(car, error);
    if (!decoder)
        return std::nullopt;
    RawCanReader reader(std::move(decoder));
    return readLog(path, &reader, error);
}

} // namespace module
