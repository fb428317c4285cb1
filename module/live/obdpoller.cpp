#include "obdpoller.h"

#include "live/troublecodes.h"
#include "obdpids.h"
#include "obdservices.h"

#include <algorithm>
#include <utility>

namespace module {

static constexpr qint64 secondMs = 1000;
static constexpr int mostFailures = 5; // in a row, of whatever is asked
static constexpr int mostTries = 3;    // of one request

ObdPoller::ObdPoller(const Settings &settings) : m_settings(settings)
{
    disconnected();
}

void ObdPoller::disconnected()
{
    m_phase = Phase::Off;
    m_isOutstanding = false;
    m_isCarSilent = false;
    m_state = m_settings.asking == Asking::Never ? QStringLiteral("The car is not asked")
                                                 : QStringLiteral("Not connected");
}

void ObdPoller::connected(qint64 nowMs)
{
    disconnected();
    if (m_settings.asking == Asking::Never)
        return;
    m_phase = Phase::Discovering;
    m_state = QStringLiteral("Asking the car what it has");
    m_supported = SupportedPids();
    m_block = 0;
    m_lampOf.clear();
    m_codesOf.clear();
    m_failures = 0;
    m_waits = 0;
    m_isEngineOff = false;
    m_standingSinceMs = -1;
    m_nextMs = nowMs;
}

qint64 ObdPoller::dueMs(const Entry &entry)
{
    return std::max(entry.askedMs + entry.item.intervalMs, entry.pausedUntilMs);
}

qint64 ObdPoller::nextDueMs() const
{
    if (m_isOutstanding || m_phase == Phase::Off || m_phase == Phase::GivenUp)
        return -1;
    if (m_phase != Phase::Polling)
        return m_nextMs;
    if (m_plan.isEmpty())
        return -1;
    return std::max(m_nextMs, dueMs(m_plan.at(mostOverdue())));
}

std::optional<ObdRequest> ObdPoller::takeRequest(qint64 nowMs)
{
    const qint64 due = nextDueMs();
    if (due < 0 || nowMs < due)
        return std::nullopt;
    if (m_phase == Phase::Waiting)
        return probe(nowMs);
    if (m_phase == Phase::Discovering)
        return discover(nowMs);
    m_entry = mostOverdue();
    m_plan[m_entry].askedMs = nowMs;
    return send(m_plan.at(m_entry).item.request, nowMs);
}

/** Where there is no time for all, all are late by the same time: slow values are not forgotten. */
int ObdPoller::mostOverdue() const
{
    const auto first =
        std::min_element(m_plan.begin(), m_plan.end(), [](const Entry &left, const Entry &right) {
            return dueMs(left) < dueMs(right);
        });
    return int(first - m_plan.begin());
}

ObdRequest ObdPoller::send(ObdRequest request, qint64 nowMs)
{
    m_isOutstanding = true;
    m_sentMs = nowMs;
    return request;
}

/** Only the units that have told of a block are expected to answer for it. */
ObdRequest ObdPoller::discover(qint64 nowMs)
{
    m_entry = -1;
    const int units = m_block == 0 ? 0 : m_supported.unitsWith(m_block).size();
    return send({QByteArray(1, obd::currentData) + char(m_block), 0, units}, nowMs);
}

int ObdPoller::entryOf(Quantity quantity) const
{
    const auto found = std::find_if(m_plan.begin(), m_plan.end(), [quantity](const Entry &entry) {
        return entry.item.quantity == quantity;
    });
    return found == m_plan.end() ? -1 : int(found - m_plan.begin());
}

/** Whether the engine runs again, or the car is there again; by then it may be another one. */
ObdRequest ObdPoller::probe(qint64 nowMs)
{
    if (m_isEngineOff) {
        m_entry = entryOf(Quantity::EngineSpeed);
        return send(m_plan.at(m_entry).item.request, nowMs);
    }
    m_phase = Phase::Discovering;
    m_supported = SupportedPids();
    m_block = 0;
    return discover(nowMs);
}

/** A request may be outstanding when another tester is seen; its end changes nothing. */
bool ObdPoller::isLeavingTheBus() const
{
    return m_phase == Phase::Waiting && !m_isEngineOff;
}

void ObdPoller::answered(const QVector<ObdAnswer> &answers, qint64 nowMs)
{
    if (!std::exchange(m_isOutstanding, false) || isLeavingTheBus())
        return;
    static constexpr double share = 0.1; // of the latest one
    m_answerMs += share * (double(nowMs - m_sentMs) - m_answerMs);
    m_failures = 0;
    m_isCarSilent = false;
    pace(nowMs);
    if (m_phase == Phase::Discovering)
        discovered(answers, nowMs);
    else if (m_entry >= 0)
        takeAnswer(answers, nowMs);
}

/** No faster than it may, and the car gets a pause after each answer. */
void ObdPoller::pace(qint64 nowMs)
{
    static constexpr double pause = 0.25; // of the time that an answer takes
    const qint64 gapMs = secondMs / m_settings.requestsPerSecond;
    m_nextMs = std::max(m_sentMs + gapMs, nowMs + qint64(pause * m_answerMs));
}

void ObdPoller::discovered(const QVector<ObdAnswer> &answers, qint64 nowMs)
{
    for (const ObdAnswer &answer : answers)
        m_supported.add(m_block, answer);
    continueDiscovery(nowMs);
}

void ObdPoller::continueDiscovery(qint64 nowMs)
{
    const int next = m_block + SupportedPids::BlockSize;
    if (next <= lastPidBlock && !m_supported.unitsWith(next).isEmpty())
        m_block = next;
    else if (!m_supported.isEmpty())
        beginPolling(nowMs);
    else
        wait(nowMs, QStringLiteral("The car does not tell what it has"));
}

void ObdPoller::beginPolling(qint64 nowMs)
{
    m_plan.clear();
    const QVector<PollItem> plan = pollPlan(m_supported);
    for (const PollItem &item : plan) {
        if (!m_settings.heard.value(int(item.quantity)))
            m_plan.append({item, nowMs - item.intervalMs, 0, 0});
    }
    m_phase = Phase::Polling;
    m_waits = 0;
    m_state = QStringLiteral("Asking the car for %1 values").arg(m_plan.size());
}

void ObdPoller::takeAnswer(const QVector<ObdAnswer> &answers, qint64 nowMs)
{
    const PollItem &item = m_plan.at(m_entry).item;
    if (item.quantity == Quantity::Count)
        takeTroubleCodes(answers);
    else if (item.quantity == Quantity::EngineLamp)
        takeLamp(answers, nowMs);
    else if (const auto value = valueOf(answers, item))
        takeValue(*value, nowMs);
    else
        noteFailure(nowMs);
}

/** The value of the unit that was asked, also where others answer too. */
std::optional<double> ObdPoller::valueOf(const QVector<ObdAnswer> &answers, const PollItem &item)
{
    for (const ObdAnswer &answer : answers) {
        const auto reading = pidReading(answer.message);
        if (answer.ecu == item.request.ecu && reading && reading->quantity == item.quantity)
            return reading->value;
    }
    return std::nullopt;
}

void ObdPoller::takeValue(double value, qint64 nowMs)
{
    m_plan[m_entry].failures = 0;
    const Quantity quantity = m_plan.at(m_entry).item.quantity;
    m_samples.append({nowMs, float(value), quantity});
    if (quantity == Quantity::EngineSpeed)
        noteEngine(value, nowMs);
}

/** On while any unit wants it on; one whose answer is lost has not changed its mind. */
void ObdPoller::takeLamp(const QVector<ObdAnswer> &answers, qint64 nowMs)
{
    bool isAnswered = false;
    for (const ObdAnswer &answer : answers) {
        const auto reading = pidReading(answer.message);
        if (!reading || reading->quantity != Quantity::EngineLamp)
            continue;
        m_lampOf[answer.ecu] = reading->value > 0;
        isAnswered = true;
    }
    if (!isAnswered) {
        noteFailure(nowMs);
        return;
    }
    const bool isOn = std::find(m_lampOf.cbegin(), m_lampOf.cend(), true) != m_lampOf.cend();
    takeValue(isOn ? 1 : 0, nowMs);
    noteLamp(isOn, nowMs);
}

/** The codes come with the lamp. */
void ObdPoller::noteLamp(bool isOn, qint64 nowMs)
{
    const int codes = entryOf(Quantity::Count);
    if (isOn != m_isLampOn && codes >= 0)
        m_plan[codes].askedMs = nowMs - m_plan.at(codes).item.intervalMs;
    m_isLampOn = isOn;
}

/** A unit that refuses, or whose answer is lost, keeps those that it had. */
void ObdPoller::takeTroubleCodes(const QVector<ObdAnswer> &answers)
{
    for (const ObdAnswer &answer : answers) {
        if (obd::byteAt(answer.message, 0) == obd::storedCodesAnswer)
            m_codesOf[answer.ecu] = troubleCodes(answer.message);
    }
    QStringList codes;
    for (const QStringList &ofUnit : qAsConst(m_codesOf))
        codes += ofUnit;
    codes.removeDuplicates();
    m_hasNewCodes |= codes != m_codes;
    m_codes = codes;
}

/** It may stand for a while at traffic lights. */
void ObdPoller::noteEngine(double rpm, qint64 nowMs)
{
    static constexpr qint64 longestStopMs = 30 * secondMs;
    if (rpm > 0) {
        m_standingSinceMs = -1;
        if (std::exchange(m_isEngineOff, false))
            beginPolling(nowMs);
        return;
    }
    if (m_standingSinceMs < 0)
        m_standingSinceMs = nowMs;
    const bool isOff = nowMs - m_standingSinceMs >= longestStopMs;
    if (!isOff || m_settings.asking == Asking::Always)
        return;
    m_isEngineOff = true;
    wait(nowMs, QStringLiteral("The engine is off"));
}

void ObdPoller::failed(ObdFailure failure, const QString &why, qint64 nowMs)
{
    if (!std::exchange(m_isOutstanding, false) || isLeavingTheBus())
        return;
    pace(nowMs);
    ++m_failures;
    const bool isSilent = failure == ObdFailure::NoBus || m_failures >= mostFailures ||
                          (m_phase == Phase::Discovering && m_block == 0);
    if (m_phase == Phase::Discovering && !isSilent && m_failures >= mostTries) {
        beginPolling(nowMs);
    } else if (isSilent || m_isEngineOff) {
        m_isEngineOff = false;
        wait(nowMs, why.left(1).toUpper() + why.mid(1));
    } else if (m_phase == Phase::Polling) {
        noteFailure(nowMs);
    }
}

/** What one value lacks must not hold up the others. */
void ObdPoller::noteFailure(qint64 nowMs)
{
    static constexpr qint64 pauseMs = 30 * secondMs;
    Entry &entry = m_plan[m_entry];
    if (++entry.failures >= mostTries)
        entry.pausedUntilMs = nowMs + pauseMs;
}

/** Each time longer; a car that was silent for minutes is left alone until it is heard. */
void ObdPoller::wait(qint64 nowMs, const QString &why)
{
    static constexpr qint64 longestMs = 60 * secondMs;
    static constexpr int mostWaits = 12;
    static constexpr int doublings = 6;
    const bool isPatient = m_settings.asking == Asking::Always || m_isEngineOff;
    m_failures = 0;
    m_isCarSilent = !m_isEngineOff;
    m_phase = ++m_waits > mostWaits && !isPatient ? Phase::GivenUp : Phase::Waiting;
    if (m_phase == Phase::GivenUp) {
        m_state = why + QStringLiteral(": not asked until it is heard");
        return;
    }
    const qint64 waitMs = m_settings.asking == Asking::Always
                              ? secondMs
                              : std::min(longestMs, secondMs << std::min(m_waits - 1, doublings));
    m_nextMs = nowMs + waitMs;
    m_state = why + QStringLiteral(": asked again in %1 s").arg(waitMs / secondMs);
}

void ObdPoller::otherTesterSeen(qint64 nowMs)
{
    static constexpr qint64 quietMs = 10 * secondMs;
    if (m_settings.asking != Asking::Auto || m_phase == Phase::Off)
        return;
    m_phase = Phase::Waiting;
    m_isEngineOff = false;
    m_nextMs = nowMs + quietMs;
    m_state = QStringLiteral("Another tester asks the car: waiting until it stops");
}

void ObdPoller::carHeard(qint64 nowMs)
{
    if (m_phase == Phase::GivenUp)
        connected(nowMs);
}

QVector<Sample> ObdPoller::takeSamples()
{
    return std::exchange(m_samples, {});
}

std::optional<QStringList> ObdPoller::takeCodes()
{
    if (!std::exchange(m_hasNewCodes, false))
        return std::nullopt;
    return m_codes;
}

QVector<bool> ObdPoller::present() const
{
    QVector<bool> present(int(Quantity::Count), false);
    for (const Entry &entry : m_plan) {
        if (entry.item.quantity != Quantity::Count)
            present[int(entry.item.quantity)] = true;
    }
    return present;
}

} // namespace module
