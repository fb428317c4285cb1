#include "adapter/elmadapter.h"

#include "adapter/answerlines.h"
#include "adapter/atcommands.h"
#include "adapter/protocols.h"
#include "linereader.h"

#include <utility>

namespace ecu {

using Kind = BadAnswers::Kind;
using module::CanFrame;
using module::isHex;
using module::longestFrame;

ElmAdapter::ElmAdapter(const Car *car, CarBus *bus, const BadAnswers &badAnswers)
    : m_car(car), m_bus(bus), m_badAnswers(badAnswers)
{
    m_state.claimsTooMuch = badAnswers.claimsTooMuch();
}

// ---- Characters ---------------------------------------------------------------------------------

void ElmAdapter::receive(const QByteArray &characters, qint64 nowMs)
{
    for (const char character : characters)
        receiveCharacter(character, nowMs);
}

/** Whatever comes while a request is on the bus ends it. */
void ElmAdapter::receiveCharacter(char character, qint64 nowMs)
{
    static constexpr int longestLine = 255;
    if (m_exchange) {
        m_exchange.reset();
        print("STOPPED");
        prompt();
        return;
    }
    if (character == '\0' || character == '\n')
        return;
    if (m_state.echoes)
        m_out += character;
    if (character != '\r') {
        if (m_line.size() < longestLine)
            m_line += character;
        return;
    }
    if (m_state.echoes && m_state.sendsLineFeeds)
        m_out += '\n';
    carryOutLine(std::exchange(m_line, {}), nowMs);
}

void ElmAdapter::print(const QByteArray &line)
{
    m_out += line + (m_state.sendsLineFeeds ? "\r\n" : "\r");
}

void ElmAdapter::prompt()
{
    print({});
    m_out += '>';
}

QByteArray ElmAdapter::takeOutput()
{
    return std::exchange(m_out, {});
}

// ---- Lines --------------------------------------------------------------------------------------

/** An empty line repeats the one before. */
void ElmAdapter::carryOutLine(QByteArray line, qint64 nowMs)
{
    line = line.simplified().replace(' ', "").toUpper();
    if (line.isEmpty())
        line = m_lastLine;
    m_lastLine = line;
    if (!line.startsWith("AT"))
        return begin(line, nowMs);
    print(carryOut(line.mid(2), *m_car, &m_state));
    prompt();
}

/** An odd digit at the end is the number of frames to wait for. */
void ElmAdapter::begin(const QByteArray &digits, qint64 nowMs)
{
    const int mostBytes = m_state.formatsData ? longestFrame - 1 : longestFrame;
    const QByteArray data = QByteArray::fromHex(digits.left(digits.size() & ~1));
    if (data.isEmpty() || !isHex(digits) || data.size() > mostBytes) {
        print("?");
        return prompt();
    }
    const BadAnswers::Row fault = m_badAnswers.next();
    if (fault.kind == Kind::Echo && !m_state.echoes)
        print(digits);
    if (failsAtOnce(fault))
        return prompt();

    const int expected = digits.size() % 2 ? digits.right(1).toInt(nullptr, 16) : 0;
    const bool isSearching = m_state.protocol != protocolOf(m_bus->isExtended());
    if (isSearching || fault.kind == Kind::Before)
        print("SEARCHING...");
    m_exchange = Exchange{fault, expected, 0, nowMs, 0, isSearching};
    m_exchange->dueMs = nowMs + waitMs();
    send(data, nowMs);
    if (m_exchange && !m_state.awaitsAnswers) {
        m_exchange.reset();
        prompt();
    }
}

bool ElmAdapter::failsAtOnce(const BadAnswers::Row &fault)
{
    const bool isReached = m_state.searches || m_state.protocol == protocolOf(m_bus->isExtended());
    if (fault.kind == Kind::Instead)
        print(fault.text);
    else if (!isReached)
        print(protocol(m_state.protocol)->failure);
    return fault.kind == Kind::Instead || !isReached;
}

// ---- The bus ------------------------------------------------------------------------------------

void ElmAdapter::send(const QByteArray &data, qint64 nowMs)
{
    QByteArray frame = m_state.formatsData ? char(data.size()) + data : data;
    frame = frame.leftJustified(longestFrame, '\0');
    m_bus->takeFrames(); // what nobody was waiting for
    m_bus->receive({m_state.requestId(m_bus->isExtended()), m_bus->isExtended(), frame}, nowMs);
    advance(nowMs);
}

void ElmAdapter::advance(qint64 nowMs)
{
    m_bus->advance(nowMs);
    // Flow control brings more.
    for (QVector<CanFrame> frames = m_bus->takeFrames(); !frames.isEmpty();
         frames = m_bus->takeFrames()) {
        for (const CanFrame &frame : qAsConst(frames))
            show(frame, nowMs);
    }
    if (m_exchange && nowMs >= m_exchange->dueMs)
        finish();
}

qint64 ElmAdapter::nextDueMs() const
{
    const qint64 ownMs = m_exchange ? m_exchange->dueMs : -1;
    const qint64 busMs = m_bus->nextDueMs();
    return ownMs < 0 || (busMs >= 0 && busMs < ownMs) ? busMs : ownMs;
}

static QByteArray faulted(const QByteArray &line, const BadAnswers::Row &fault)
{
    if (fault.kind == Kind::HalfLine)
        return line.left(line.size() / 2);
    return fault.kind == Kind::InLine ? line + fault.text : line;
}

void ElmAdapter::show(const CanFrame &frame, qint64 nowMs)
{
    if (!m_exchange || !m_state.accepts(frame))
        return;
    if (m_exchange->isSearching)
        m_state.protocol = protocolOf(m_bus->isExtended());
    for (const QByteArray &line : answerLines(frame, m_state))
        print(faulted(line, m_exchange->fault));
    learn(nowMs - std::exchange(m_exchange->lastMs, nowMs));
    m_exchange->dueMs = nowMs + waitMs();
    ++m_exchange->frames;
    if (m_exchange->fault.kind == Kind::AfterLine)
        print(m_exchange->fault.text);
    if (m_exchange->frames == m_exchange->expected || m_exchange->fault.kind == Kind::AfterLine)
        return finish();
    controlFlow(frame, nowMs);
}

/** To a first frame: the rest at once. */
void ElmAdapter::controlFlow(const CanFrame &frame, qint64 nowMs)
{
    static constexpr int firstFrame = 1;
    const bool isFirst = !frame.data.isEmpty() && quint8(frame.data[0]) >> 4 == firstFrame;
    if (!isFirst || !m_state.controlsFlow)
        return;
    static const QByteArray goOn = QByteArray::fromHex("3000000000000000");
    for (int unit = 0; unit < CarBus::MostUnits; ++unit) {
        const auto addresses = CarBus::addressesOf(unit, m_bus->isExtended());
        if (addresses.send == frame.id)
            m_bus->receive({addresses.receive, m_bus->isExtended(), goOn}, nowMs);
    }
}

/** The time that is set or, once it is known how soon this car answers, less. */
qint64 ElmAdapter::waitMs() const
{
    static constexpr int unitMs = 4;
    const qint64 setMs = qint64(m_state.timeout) * unitMs;
    if (m_state.adaptiveTiming == 0 || m_latencyMs < 0)
        return setMs;
    const qint64 learnedMs = m_state.adaptiveTiming == 1 ? 2 * m_latencyMs + 30 : m_latencyMs + 15;
    return qMin(setMs, learnedMs);
}

/** A slow answer counts at once, quick ones little by little. */
void ElmAdapter::learn(qint64 latencyMs)
{
    m_latencyMs = qMax(latencyMs, m_latencyMs - m_latencyMs / 8);
}

void ElmAdapter::finish()
{
    const Exchange done = *m_exchange;
    m_exchange.reset();
    if (done.frames == 0) {
        m_latencyMs = -1; // wait longer for the next one
        print(done.isSearching ? "UNABLE TO CONNECT" : "NO DATA");
    }
    prompt();
}

} // namespace ecu
