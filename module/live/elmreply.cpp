#include "elmreply.h"

#include "linereader.h"
#include "live/isotp.h"
#include "obdservices.h"

#include <algorithm>
#include <cctype>
#include <map>

namespace module {

static constexpr char prompt = '>';

struct Word
{
    const char *start; // of a line in capitals without spaces
    ElmLine::Kind kind;
    ObdFailure failure;
    const char *meaning;
};

static constexpr ObdFailure none = ObdFailure::NoAnswer;

// clang-format off
static constexpr Word words[] = {
    {"OK",              ElmLine::Ok,        none,                 nullptr},
    {"?",               ElmLine::Refused,   none,                 nullptr},
    {"NODATA",          ElmLine::Failure,   ObdFailure::NoAnswer, "the car does not answer (NO DATA)"},
    {"UNABLETOCONNECT", ElmLine::Failure,   ObdFailure::NoBus,    "no bus of a car was found (UNABLE TO CONNECT)"},
    {"CANERROR",        ElmLine::Failure,   ObdFailure::NoBus,    "the car's bus does not take messages (CAN ERROR)"},
    {"BUSBUSY",         ElmLine::Failure,   ObdFailure::NoBus,    "the car's bus is too busy (BUS BUSY)"},
    {"BUSERROR",        ElmLine::Failure,   ObdFailure::NoBus,    "the car's bus does not work (BUS ERROR)"},
    {"FBERROR",         ElmLine::Failure,   ObdFailure::NoBus,    "the adapter cannot drive the car's bus (FB ERROR)"},
    {"ERROR",           ElmLine::Failure,   ObdFailure::NoBus,    "the car's bus does not start (BUS INIT: ERROR)"},
    {"BUFFERFULL",      ElmLine::Failure,   ObdFailure::Damaged,  "the adapter cannot keep up (BUFFER FULL)"},
    {"STOPPED",         ElmLine::Failure,   ObdFailure::Damaged,  "the adapter was interrupted (STOPPED)"},
    {"DATAERROR",       ElmLine::Failure,   ObdFailure::Damaged,  "an answer was damaged (DATA ERROR)"},
    {"RXERROR",         ElmLine::Failure,   ObdFailure::Damaged,  "an answer was damaged (RX ERROR)"},
    {"ERR",             ElmLine::Failure,   ObdFailure::Damaged,  "the adapter has a fault of its own (ERR)"},
    {"LPALERT",         ElmLine::Failure,   ObdFailure::NoBus,    "the adapter is about to sleep (LP ALERT)"},
    {"ACTALERT",        ElmLine::Failure,   ObdFailure::NoBus,    "the adapter is about to sleep (ACT ALERT)"},
    {"LVRESET",         ElmLine::Restarted, none,                 nullptr},
    {"ELM327",          ElmLine::Restarted, none,                 nullptr},
};
// clang-format on

static QByteArray compact(const QByteArray &line)
{
    QByteArray text;
    for (const char c : line) {
        if (std::isspace(static_cast<unsigned char>(c)) == 0 && c != '\0')
            text += char(std::toupper(static_cast<unsigned char>(c)));
    }
    return text;
}

/** Removes a word and the dots after it: an adapter writes them while it searches. */
static bool skip(const char *word, QByteArray *text)
{
    if (!text->startsWith(word))
        return false;
    int length = int(qstrlen(word));
    while (length < text->size() && text->at(length) == '.')
        ++length;
    text->remove(0, length);
    return true;
}

/** The text without what is written in front of an answer. */
static QByteArray withoutProgress(QByteArray text)
{
    skip("SEARCHING", &text);
    if (!skip("BUSINIT:", &text))
        return text;
    if (text.startsWith("OK"))
        text.remove(0, 2);
    return text;
}

/** Of 11 bits the identifier has three digits, so that their number is odd. */
static std::optional<ElmLine> frameOf(const QByteArray &digits)
{
    static constexpr int shortId = 3;
    static constexpr int longId = 8;
    static constexpr int oldHeader = 6;
    static constexpr int checksum = 2;
    static constexpr int mostDigits = 2 * 8;
    static constexpr quint32 longest = 0x1FFFFFFF;
    const bool isShort = digits.size() % 2 == 1;
    const int idDigits = isShort ? shortId : longId;
    const QByteArray data = digits.mid(idDigits);
    const quint32 id = digits.left(idDigits).toUInt(nullptr, 16);
    ElmLine line;
    if (!data.isEmpty() && data.size() <= mostDigits && id <= longest) {
        line.kind = ElmLine::Frame;
        line.frame = {id, !isShort, QByteArray::fromHex(data)};
        return line;
    }
    if (isShort || digits.size() <= oldHeader + checksum)
        return std::nullopt;
    line.kind = ElmLine::OldFrame;
    line.frame.id = digits.mid(oldHeader - 2, 2).toUInt(nullptr, 16); // the sender
    line.frame.data =
        QByteArray::fromHex(digits.mid(oldHeader, digits.size() - oldHeader - checksum));
    return line;
}

static const Word *findWord(const QByteArray &text)
{
    const int mark = text.indexOf('<'); // in front of it what could be read
    const QByteArray start = mark >= 0 ? text.mid(mark + 1) : text;
    const auto found = std::find_if(std::begin(words), std::end(words), [&start](const Word &word) {
        return start.startsWith(word.start);
    });
    return found == std::end(words) ? nullptr : found;
}

static ElmLine lineOf(const Word &word, const QString &text)
{
    ElmLine line;
    line.kind = word.kind;
    line.failure = word.failure;
    line.text = word.meaning ? QLatin1String(word.meaning) : text;
    return line;
}

std::optional<ElmLine> parseElmLine(const QByteArray &line)
{
    const QByteArray text = withoutProgress(compact(line));
    if (text.isEmpty())
        return std::nullopt;
    if (isHex(text)) {
        if (auto frame = frameOf(text))
            return frame;
    }
    const QString shown = excerpt(line.trimmed());
    if (const Word *word = findWord(text))
        return lineOf(*word, shown);
    ElmLine other;
    other.text = shown;
    return other;
}

bool isElmEcho(const QByteArray &line, const QByteArray &command)
{
    return compact(line) == compact(command);
}

static bool isAnswerTo(const QByteArray &request, const QByteArray &answer)
{
    using namespace obd;
    if (byteAt(answer, 0) == refusal)
        return byteAt(answer, 1) == byteAt(request, 0);
    const bool isSamePid = request.size() < 2 || byteAt(answer, 1) == byteAt(request, 1);
    return byteAt(answer, 0) == (byteAt(request, 0) | answerBit) && isSamePid;
}

/** @return the messages that a frame completes */
static QVector<QByteArray> messagesOf(const CanFrame &frame, std::map<quint32, IsoTp> *units,
                                      QString *error)
{
    const IsoTp::Addresses addresses = {0, frame.id, frame.isExtended};
    IsoTp &unit = units->try_emplace(frame.id, addresses).first->second;
    unit.receive(frame, 0);
    *error = unit.takeError();
    if (error->isEmpty() && unit.nextDueMs() >= 0)
        *error = QStringLiteral("the end of a message is missing");
    return unit.takeMessages();
}

ElmAnswers elmAnswers(const QByteArray &request, const QVector<ElmLine> &lines)
{
    std::map<quint32, IsoTp> units;
    ElmAnswers found;
    for (const ElmLine &line : lines) {
        QVector<QByteArray> messages;
        if (line.kind == ElmLine::OldFrame)
            messages = {line.frame.data};
        if (line.kind == ElmLine::Frame && isObdAnswer(line.frame)) {
            found.frames.append(line.frame);
            messages = messagesOf(line.frame, &units, &found.error);
        }
        for (const QByteArray &message : qAsConst(messages)) {
            if (isAnswerTo(request, message))
                found.answers.append({line.frame.id, message});
        }
    }
    return found;
}

void ElmReader::add(const QByteArray &bytes)
{
    m_bytes += bytes;
    if (m_bytes.size() > LongestReply)
        m_bytes.remove(0, m_bytes.size() - LongestReply);
}

bool ElmReader::hasReply() const
{
    return m_bytes.contains(prompt);
}

QList<QByteArray> ElmReader::takeReply()
{
    const int end = m_bytes.indexOf(prompt);
    QByteArray reply = m_bytes.left(end).replace('\n', '\r');
    m_bytes.remove(0, end + 1);
    QList<QByteArray> lines = reply.split('\r');
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [](const QByteArray &line) { return compact(line).isEmpty(); }),
                lines.end());
    return lines;
}

} // namespace module
