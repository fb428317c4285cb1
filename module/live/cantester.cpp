#include "cantester.h"

#include "obdservices.h"

#include <algorithm>
#include <utility>

namespace module {

using namespace obd;

static constexpr quint32 toAll = 0x7DF;
static constexpr quint32 toAllExtended = 0x18DB33F1;
static constexpr quint32 answerOffset = 8; // of 11 bits, from a request to its answer
static constexpr quint32 addressMask = 0xFF;
static constexpr quint32 toOneExtended = 0x18DA00F1;

static constexpr qint64 pendingMs = 5000; // for a unit that has asked for time
static constexpr qint64 allMs = 500;      // for all units, of which each may come late

/** The identifier of requests to a unit, by that of its answers. */
static quint32 requestId(quint32 ecu, bool isExtended)
{
    return isExtended ? toOneExtended | (ecu & addressMask) << 8 : ecu - answerOffset;
}

void CanTester::ask(const ObdRequest &request, qint64 nowMs)
{
    m_request = request;
    m_isAsking = true;
    m_askedMs = nowMs;
    m_answers.clear();
    m_error.clear();
    m_connections.clear();
    if (request.ecu == 0)
        askAll(m_isFormatKnown && m_isExtended, nowMs);
    else
        askOne(nowMs);
}

void CanTester::askAll(bool isExtended, qint64 nowMs)
{
    m_isExtended = isExtended;
    IsoTp all({isExtended ? toAllExtended : toAll, 0, isExtended});
    all.send(m_request.message, nowMs);
    m_frames += all.takeFrames();
    m_dueMs = nowMs + allMs;
}

void CanTester::askOne(qint64 nowMs)
{
    IsoTp &unit = connection(m_request.ecu, m_isExtended);
    unit.send(m_request.message, nowMs);
    m_frames += unit.takeFrames();
    m_dueMs = nowMs + patienceMs();
}

/** For one unit, by what it took before. */
qint64 CanTester::patienceMs() const
{
    static constexpr double times = 4;
    static constexpr double leastMs = 100;
    static constexpr double mostMs = 1000;
    return qint64(std::clamp(times * m_answerMs, leastMs, mostMs));
}

IsoTp &CanTester::connection(quint32 ecu, bool isExtended)
{
    return m_connections
        .try_emplace(ecu, IsoTp::Addresses{requestId(ecu, isExtended), ecu, isExtended})
        .first->second;
}

/** A frame of another tester's conversation gets no flow control from here. */
bool CanTester::isMatching(const CanFrame &frame) const
{
    static constexpr quint8 firstFrame = 1;
    static constexpr quint8 kinds = 2; // of frames that begin a message
    const quint8 kind = byteAt(frame.data, 0) >> 4;
    const int start = kind == firstFrame ? 2 : 1;
    const quint8 service = byteAt(frame.data, start);
    const quint8 asked = byteAt(m_request.message, 0);
    return kind >= kinds || service == (asked | answerBit) ||
           (service == refusal && byteAt(frame.data, start + 1) == asked);
}

void CanTester::receive(const CanFrame &frame, qint64 nowMs)
{
    if (isObdRequest(frame)) {
        m_events.append({ObdEvent::OtherTester, {}, ObdFailure::NoAnswer, {}});
        return;
    }
    const bool isExpected = m_request.ecu == 0 || m_request.ecu == frame.id;
    if (!m_isAsking || !isObdAnswer(frame) || frame.isExtended != m_isExtended || !isExpected ||
        !isMatching(frame))
        return;
    IsoTp &unit = connection(frame.id, frame.isExtended);
    unit.receive(frame, nowMs);
    takeFrom(&unit, frame.id, nowMs);
}

void CanTester::takeFrom(IsoTp *unit, quint32 ecu, qint64 nowMs)
{
    m_frames += unit->takeFrames();
    const QVector<QByteArray> messages = unit->takeMessages();
    for (const QByteArray &message : messages)
        takeAnswer({ecu, message}, nowMs);
    const QString error = unit->takeError();
    if (!error.isEmpty())
        m_error = error;
    if (m_isAsking && (isComplete() || (m_request.ecu != 0 && !m_error.isEmpty())))
        finish();
}

void CanTester::takeAnswer(const ObdAnswer &answer, qint64 nowMs)
{
    static constexpr int pidAt = 1;
    const bool isPending =
        byteAt(answer.message, 0) == refusal && byteAt(answer.message, 2) == answerPending;
    if (isPending) {
        m_dueMs = nowMs + pendingMs;
        return;
    }
    const bool isOther = byteAt(m_request.message, 0) == currentData &&
                         byteAt(answer.message, 0) != refusal &&
                         byteAt(answer.message, pidAt) != byteAt(m_request.message, pidAt);
    if (isOther)
        return;
    noteAnswerTime(nowMs);
    m_isFormatKnown = true;
    m_answers.append(answer);
}

void CanTester::noteAnswerTime(qint64 nowMs)
{
    static constexpr double share = 0.1; // of the latest one
    m_answerMs += share * (double(nowMs - m_askedMs) - m_answerMs);
}

bool CanTester::isComplete() const
{
    const int expected = m_request.ecu != 0 ? 1 : m_request.answers;
    return expected > 0 && m_answers.size() >= expected;
}

void CanTester::advance(qint64 nowMs)
{
    for (auto &[ecu, unit] : m_connections) {
        unit.advance(nowMs);
        takeFrom(&unit, ecu, nowMs);
    }
    if (m_isAsking && nowMs >= m_dueMs)
        timeOut(nowMs);
}

void CanTester::timeOut(qint64 nowMs)
{
    const bool isReceiving =
        std::any_of(m_connections.cbegin(), m_connections.cend(),
                    [](const auto &unit) { return unit.second.nextDueMs() >= 0; });
    if (isReceiving)
        return; // which ends by itself
    const bool triesOther =
        m_request.ecu == 0 && m_answers.isEmpty() && !m_isFormatKnown && !m_isExtended;
    if (triesOther)
        askAll(true, nowMs);
    else
        finish();
}

qint64 CanTester::nextDueMs() const
{
    qint64 due = -1;
    for (const auto &unit : m_connections) {
        const qint64 of = unit.second.nextDueMs();
        if (of >= 0 && (due < 0 || of < due))
            due = of;
    }
    return due >= 0 || !m_isAsking ? due : m_dueMs;
}

void CanTester::finish()
{
    static const QString silence = QStringLiteral("the car does not answer");
    m_isAsking = false;
    m_isFormatKnown = m_isFormatKnown && (m_request.ecu != 0 || !m_answers.isEmpty());
    if (!m_answers.isEmpty())
        m_events.append({ObdEvent::Answered, m_answers, ObdFailure::NoAnswer, {}});
    else if (m_error.isEmpty())
        m_events.append({ObdEvent::Failed, {}, ObdFailure::NoAnswer, silence});
    else
        m_events.append({ObdEvent::Failed, {}, ObdFailure::Damaged, m_error});
}

QVector<CanFrame> CanTester::takeFrames()
{
    return std::exchange(m_frames, {});
}

QVector<ObdEvent> CanTester::takeEvents()
{
    return std::exchange(m_events, {});
}

} // namespace module
