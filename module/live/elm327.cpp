#include "elm327.h"

#include "linereader.h"

#include <algorithm>
#include <utility>

namespace module {

static constexpr int mostTries = 3;

struct Setting
{
    const char *command;
    bool isNeeded; // the others only make it faster, and clones lack some
};

// clang-format off
static constexpr Setting settings[] = {
    {"ATE0",  true},  // no echo
    {"ATL0",  false}, // no line feeds
    {"ATS0",  false}, // no spaces
    {"ATH1",  true},  // with headers: who answers
    {"ATAT1", false}, // adapts its patience to the car
    {"ATSP0", true},  // searches for the car's protocol
};
// clang-format on

static constexpr char identification[] = "ATZ";
static constexpr char reset[] = "the adapter has started anew";

void Elm327::start(qint64 nowMs)
{
    m_reader.clear();
    m_countsFrames = true;
    m_isConnected = false;
    m_answerMs = 0;
    m_tries = 0;
    m_name.clear();
    identify(nowMs);
}

void Elm327::identify(qint64 nowMs)
{
    m_phase = Phase::Identifying;
    send(identification, nowMs);
}

void Elm327::send(const QByteArray &command, qint64 nowMs)
{
    m_command = command;
    m_bytes += command + '\r';
    ++m_tries;
    m_sentMs = nowMs;
    m_dueMs = nowMs + patienceMs();
}

/** The search for a protocol and the start of a slow bus take long, and say so. */
qint64 Elm327::patienceMs() const
{
    static constexpr qint64 commandMs = 2000;
    static constexpr qint64 searchMs = 30000;
    static constexpr double leastMs = 500;
    static constexpr double times = 6;
    const QByteArray pending = m_reader.pending();
    const bool isSearching = pending.contains("SEARCHING") || pending.contains("BUS INIT");
    const bool isFirst = m_phase == Phase::Asking && !m_isConnected && m_tries <= 1;
    if (isFirst || isSearching)
        return searchMs;
    const bool isUsual = m_phase == Phase::Asking && m_isConnected;
    return isUsual ? std::min(commandMs, qint64(leastMs + times * m_answerMs)) : commandMs;
}

void Elm327::ask(const ObdRequest &request, qint64 nowMs)
{
    m_request = request;
    m_phase = Phase::Asking;
    m_tries = 0;
    m_askedMs = nowMs;
    sendRequest(nowMs);
}

/**
 * A digit after the request is the number of frames after which the adapter stops waiting. Current
 * data fits into one frame of each unit; other services may need more.
 */
void Elm327::sendRequest(qint64 nowMs)
{
    static constexpr int mostFrames = 9;
    static constexpr char currentData = 1;
    QByteArray command = m_request.message.toHex().toUpper();
    const bool isCounted = m_countsFrames && m_request.answers >= 1 &&
                           m_request.answers <= mostFrames &&
                           m_request.message.startsWith(currentData);
    if (isCounted)
        command += QByteArray::number(m_request.answers);
    send(command, nowMs);
}

/** What goes on coming is waited for, but not for ever. */
void Elm327::receive(const QByteArray &bytes, qint64 nowMs)
{
    static constexpr qint64 longestMs = 60000;
    m_reader.add(bytes);
    while (m_reader.hasReply())
        takeReply(m_reader.takeReply(), nowMs);
    if (m_dueMs < 0)
        return;
    if (m_reader.isOverfull())
        timeOut(nowMs);
    else
        m_dueMs = std::min(std::max(m_dueMs, nowMs + patienceMs()), m_sentMs + longestMs);
}

QVector<ElmLine> Elm327::linesOf(const QList<QByteArray> &reply) const
{
    QVector<ElmLine> lines;
    for (const QByteArray &line : reply) {
        const auto parsed = isElmEcho(line, m_command) ? std::nullopt : parseElmLine(line);
        if (parsed)
            lines.append(*parsed);
    }
    return lines;
}

static bool has(const QVector<ElmLine> &lines, ElmLine::Kind kind)
{
    return std::any_of(lines.begin(), lines.end(),
                       [kind](const ElmLine &line) { return line.kind == kind; });
}

void Elm327::takeReply(const QList<QByteArray> &reply, qint64 nowMs)
{
    const QVector<ElmLine> lines = linesOf(reply);
    switch (m_phase) {
    case Phase::Identifying:
        readIdentification(lines, nowMs);
        break;
    case Phase::Setting:
        readSetting(lines, nowMs);
        break;
    case Phase::Asking:
        readAnswers(lines, nowMs);
        break;
    case Phase::Ready:
        if (has(lines, ElmLine::Restarted))
            lose(QLatin1String(reset));
        break;
    case Phase::Idle:
        break;
    }
}

void Elm327::readIdentification(const QVector<ElmLine> &lines, qint64 nowMs)
{
    const auto named = std::find_if(lines.begin(), lines.end(), [](const ElmLine &line) {
        return line.kind == ElmLine::Restarted && line.text.contains(QLatin1String("ELM"));
    });
    if (named != lines.end()) {
        m_name = named->text;
        m_setting = 0;
        m_phase = Phase::Setting;
        m_tries = 0;
        setNext(nowMs);
    } else if (m_tries < mostTries) {
        identify(nowMs); // what it was busy with swallows a command
    } else {
        lose(QStringLiteral("expected an ELM327 adapter, got '%1'")
                 .arg(lines.isEmpty() ? QString() : lines.constFirst().text));
    }
}

void Elm327::setNext(qint64 nowMs)
{
    if (m_setting < int(std::size(settings))) {
        send(settings[m_setting].command, nowMs);
        return;
    }
    m_phase = Phase::Ready;
    m_dueMs = -1;
    m_events.append({ObdEvent::Ready, {}, ObdFailure::NoAnswer, {}});
}

void Elm327::readSetting(const QVector<ElmLine> &lines, qint64 nowMs)
{
    const Setting &setting = settings[m_setting];
    const bool isSet = has(lines, ElmLine::Ok) || !setting.isNeeded;
    if (!isSet && m_tries >= mostTries) {
        lose(QStringLiteral("expected an adapter that takes %1, got '%2'")
                 .arg(QLatin1String(setting.command),
                      lines.isEmpty() ? QString() : lines.constFirst().text));
        return;
    }
    if (isSet) {
        ++m_setting;
        m_tries = 0;
    }
    setNext(nowMs);
}

void Elm327::readAnswers(const QVector<ElmLine> &lines, qint64 nowMs)
{
    const ElmAnswers found = elmAnswers(m_request.message, lines);
    m_seen += found.frames;
    const auto failure = std::find_if(lines.begin(), lines.end(), [](const ElmLine &line) {
        return line.kind == ElmLine::Failure;
    });
    if (has(lines, ElmLine::Restarted))
        lose(QLatin1String(reset));
    else if (!found.answers.isEmpty())
        answer(found.answers, nowMs);
    else if (refusesCount(lines))
        sendRequest(nowMs);
    else if (failure != lines.end())
        fail(failure->failure, failure->text);
    else if (!found.error.isEmpty())
        fail(ObdFailure::Damaged, found.error);
    else if (lines.isEmpty())
        fail(ObdFailure::NoAnswer, QStringLiteral("the adapter answers nothing"));
    else if (lines.constFirst().text.isEmpty())
        fail(ObdFailure::Damaged, QStringLiteral("the answer is to another request"));
    else
        fail(ObdFailure::Damaged,
             QStringLiteral("the adapter answers '%1'").arg(lines.constFirst().text));
}

/** Old adapters and clones do not know the number of frames. */
bool Elm327::refusesCount(const QVector<ElmLine> &lines)
{
    const bool isRefused = has(lines, ElmLine::Refused) && m_countsFrames && m_request.answers > 0;
    m_countsFrames = m_countsFrames && !isRefused;
    return isRefused;
}

void Elm327::advance(qint64 nowMs)
{
    if (m_dueMs >= 0 && nowMs >= m_dueMs)
        timeOut(nowMs);
}

/**
 * A command or its prompt may be lost once; a return alone repeats the last command. Whatever is
 * sent also stops an adapter that reports all that it sees.
 */
void Elm327::timeOut(qint64 nowMs)
{
    const QByteArray pending = m_reader.pending();
    const bool isOverfull = m_reader.isOverfull();
    m_reader.clear();
    if (m_phase == Phase::Identifying && m_tries >= mostTries) {
        const QString shown = excerpt(pending.simplified());
        lose(shown.isEmpty() ? QStringLiteral("expected an ELM327 adapter, got no answer")
                             : QStringLiteral("expected an ELM327 adapter, got '%1'").arg(shown));
    } else if (m_tries >= mostTries) {
        lose(isOverfull ? QStringLiteral("the adapter does not stop sending")
                        : QStringLiteral("the adapter does not answer"));
    } else if (m_phase == Phase::Asking) {
        sendRequest(nowMs);
    } else {
        send(m_command, nowMs);
    }
}

void Elm327::answer(const QVector<ObdAnswer> &answers, qint64 nowMs)
{
    static constexpr double share = 0.1; // of the latest one
    if (m_isConnected)
        m_answerMs += share * (double(nowMs - m_askedMs) - m_answerMs);
    m_isConnected = true;
    m_phase = Phase::Ready;
    m_dueMs = -1;
    m_events.append({ObdEvent::Answered, answers, ObdFailure::NoAnswer, {}});
}

void Elm327::fail(ObdFailure failure, const QString &why)
{
    m_isConnected = m_isConnected && failure != ObdFailure::NoBus;
    m_phase = Phase::Ready;
    m_dueMs = -1;
    m_events.append({ObdEvent::Failed, {}, failure, why});
}

void Elm327::lose(const QString &why)
{
    m_phase = Phase::Idle;
    m_dueMs = -1;
    m_events.append({ObdEvent::Lost, {}, ObdFailure::NoAnswer, why});
}

QByteArray Elm327::takeBytes()
{
    return std::exchange(m_bytes, {});
}

QVector<ObdEvent> Elm327::takeEvents()
{
    return std::exchange(m_events, {});
}

QVector<CanFrame> Elm327::takeSeenFrames()
{
    return std::exchange(m_seen, {});
}

} // namespace module
