#include "candump.h"

#include "driveclock.h"
#include "linereader.h"
#include "live/obdlink.h"
#include "live/troublecodes.h"
#include "missingvalues.h"
#include "obdpids.h"
#include "obdservices.h"

#include <QFileInfo>
#include <QMap>

namespace module {

static constexpr int standardDigits = 3; // of an identifier of 11 bits

/** The time of a word such as "(1725694999.693250)". */
static std::optional<double> secondsOf(const QByteArray &word)
{
    static constexpr double mostSeconds = 1e11;
    bool isNumber = false;
    const double seconds = word.mid(1, word.size() - 2).toDouble(&isNumber);
    const bool isTime = isNumber && word.startsWith('(') && word.endsWith(')') && seconds >= 0 &&
                        seconds < mostSeconds;
    return isTime ? std::optional(seconds) : std::nullopt;
}

static std::optional<QByteArray> bytesOf(const QByteArray &digits, int most)
{
    const bool isSound = isHex(digits) && digits.size() % 2 == 0 && digits.size() <= 2 * most;
    return isSound ? std::optional(QByteArray::fromHex(digits)) : std::nullopt;
}

/** What follows the first hash: bytes, a remote frame without any, or the flags of a long frame. */
static std::optional<QByteArray> dataOf(const QByteArray &text)
{
    static constexpr int longestFd = 64;
    static constexpr int markAndFlags = 2;
    if (text.startsWith('R'))
        return QByteArray();
    if (!text.startsWith('#'))
        return bytesOf(text, longestFrame);
    return text.size() >= markAndFlags ? bytesOf(text.mid(markAndFlags), longestFd) : std::nullopt;
}

std::optional<LoggedFrame> parseCandumpLine(const QByteArray &line)
{
    const QList<QByteArray> words = line.simplified().split(' ');
    const bool hasMark = words.size() == 4 && (words[3] == "R" || words[3] == "T");
    const std::optional<double> seconds = secondsOf(words[0]);
    if ((words.size() != 3 && !hasMark) || !seconds)
        return std::nullopt;

    const int hash = words[2].indexOf('#');
    const QByteArray id = words[2].left(hash);
    const bool isId = hash > 0 && isHex(id) && (id.size() == standardDigits || id.size() == 8);
    const auto data = dataOf(words[2].mid(hash + 1));
    if (!isId || !data)
        return std::nullopt;

    LoggedFrame frame;
    frame.timeUs = qRound64(*seconds * 1e6);
    frame.id = id.toUInt(nullptr, 16);
    if (id.size() != standardDigits)
        frame.id |= LoggedFrame::ExtendedFlag;
    frame.data = *data;
    return frame;
}

/** Collects the values of a log. */
class CandumpReader
{
public:
    void read(const LoggedFrame &frame)
    {
        ++m_frames;
        m_clock.at(double(frame.timeUs) / 1000.0);
        const bool isExtended = (frame.id & LoggedFrame::ExtendedFlag) != 0;
        const CanFrame onBus = {frame.id & ~LoggedFrame::ExtendedFlag, isExtended, frame.data};
        if (isObdAnswer(onBus))
            readAnswer(onBus);
        else if (isObdRequest(onBus))
            ++m_requests;
        else
            ++m_others;
    }

    int frames() const { return m_frames; }
    SampleLog take(const QString &path, int badLines);

private:
    void readAnswer(const CanFrame &frame)
    {
        const QByteArray &data = frame.data;
        ++m_answers;
        if (const auto codes = m_codes.read(frame))
            m_log.addCodes(m_clock.nowMs(), *codes);
        const auto *bytes = reinterpret_cast<const quint8 *>(data.constData());
        // A single frame: its length, then the service of the answer.
        const bool isSingle = data.size() >= 3 && bytes[0] >= 2 && bytes[0] <= 7;
        if (!isSingle || bytes[1] != obd::currentDataAnswer) {
            ++m_otherAnswers;
            return;
        }
        ++m_perPid[bytes[2]];
        const auto reading = pidReading(data.mid(1, bytes[0]));
        const Pid *pid = findPid(bytes[2]);
        if (reading)
            m_log.add(m_clock.nowMs(), reading->quantity, reading->value);
        else if (pid && pid->quantity != Quantity::Count)
            ++m_log.droppedValues;
    }

    SampleLog m_log;
    TroubleCodeReader m_codes;
    QMap<quint8, int> m_perPid;
    DriveClock m_clock;
    int m_frames = 0;
    int m_requests = 0;
    int m_answers = 0;
    int m_otherAnswers = 0;
    int m_others = 0;
};

SampleLog CandumpReader::take(const QString &path, int badLines)
{
    m_log.title = QFileInfo(path).fileName();
    m_log.durationMs = m_clock.nowMs();
    m_log.badLines = badLines;

    QJsonObject perPid;
    for (auto it = m_perPid.cbegin(); it != m_perPid.cend(); ++it)
        perPid.insert(QStringLiteral("%1").arg(it.key(), 2, 16, QLatin1Char('0')).toUpper(),
                      it.value());
    m_log.details = {{"kind", "candump"},
                     {"frames", m_frames},
                     {"requests", m_requests},
                     {"answers", m_answers},
                     {"otherAnswers", m_otherAnswers},
                     {"otherFrames", m_others},
                     {"irregularSteps", m_clock.irregularSteps()},
                     {"framesPerPid", perPid}};
    m_log.remarks.append(QStringLiteral("%1 frames: %2 requests, %3 answers, %4 others ignored")
                             .arg(m_frames)
                             .arg(m_requests)
                             .arg(m_answers)
                             .arg(m_others));
    markMissingValues(&m_log);
    return m_log;
}

std::optional<SampleLog> readCandump(const QString &path, QString *error)
{
    LineReader lines(path, error);
    if (!lines.isOpen())
        return std::nullopt;

    CandumpReader reader;
    QByteArray line;
    int badLines = 0;
    while (lines.next(&line)) {
        if (line.trimmed().isEmpty() && !lines.wasTooLong())
            continue;
        if (const auto frame = parseCandumpLine(line))
            reader.read(*frame);
        else
            ++badLines;
    }
    SampleLog log = reader.take(path, badLines);
    if (log.samples.isEmpty()) {
        *error = QStringLiteral("%1: line %2: expected OBD-II answers on 7E8 to 7EF, found none in "
                                "%3 frames and %4 damaged lines; a raw log needs --dbc FILE and "
                                "--map FILE at the start")
                     .arg(path, QString::number(lines.lineNumber()),
                          QString::number(reader.frames()), QString::number(badLines));
        return std::nullopt;
    }
    return log;
}

} // namespace module
