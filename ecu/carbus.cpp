#include "carbus.h"

#include "services.h"

#include <utility>

namespace ecu {

using module::CanFrame;
using module::IsoTp;

quint32 CarBus::functionalId(bool isExtended)
{
    return isExtended ? 0x18DB33F1 : 0x7DF;
}

IsoTp::Addresses CarBus::addressesOf(int unit, bool isExtended)
{
    static constexpr quint32 engine = 0x10; // the units' addresses of one byte begin here
    static constexpr quint32 tester = 0xF1;
    const auto number = quint32(unit);
    if (!isExtended)
        return {0x7E8 + number, 0x7E0 + number, false};
    return {0x18DA0000 | tester << 8 | (engine + number),
            0x18DA0000 | (engine + number) << 8 | tester, true};
}

CarBus::CarBus(const Car *car, const Settings &settings)
    : m_car(car)
    , m_settings(settings)
    , m_chance(settings.seed)
    , m_otherTesterMs(settings.otherTesterMs > 0 ? settings.otherTesterMs : -1)
{
    for (int unit = 0; unit < settings.units; ++unit)
        m_connections.append(IsoTp(addressesOf(unit, settings.isExtended)));
}

/** A request for all units is a single frame. */
static bool isSingleFrame(const CanFrame &frame)
{
    return !frame.data.isEmpty() && quint8(frame.data[0]) >> 4 == 0;
}

void CarBus::receive(const CanFrame &frame, qint64 nowMs)
{
    const bool isForAll = frame.id == functionalId(m_settings.isExtended);
    if (frame.isExtended != m_settings.isExtended || (isForAll && !isSingleFrame(frame)))
        return;
    for (int unit = 0; unit < m_connections.size(); ++unit) {
        CanFrame own = frame;
        if (isForAll)
            own.id = addressesOf(unit, m_settings.isExtended).receive;
        m_connections[unit].receive(own, nowMs);
        for (const QByteArray &message : m_connections[unit].takeMessages())
            request(unit, message, isForAll, nowMs);
    }
    advance(nowMs);
}

void CarBus::request(int unit, const QByteArray &message, bool isForAll, qint64 nowMs)
{
    const QByteArray reply =
        answer(*m_car, unit, message, isForAll ? Addressing::Functional : Addressing::Physical);
    if (!reply.isEmpty() && !m_chance.occurs(m_settings.lost))
        m_answers.append({unit, nowMs + m_settings.delayMs, reply});
}

void CarBus::advance(qint64 nowMs)
{
    if (m_otherTesterMs >= 0 && nowMs >= m_otherTesterMs)
        askAsOtherTester(nowMs);
    sendDue(nowMs);
    for (IsoTp &connection : m_connections)
        connection.advance(nowMs);
    collectFrames();
}

void CarBus::askAsOtherTester(qint64 nowMs)
{
    static const QByteArray engineSpeed = QByteArray::fromHex("02010C5555555555");
    m_otherTesterMs = nowMs + m_settings.otherTesterMs;
    const bool isExtended = m_settings.isExtended;
    const CanFrame frame = {functionalId(isExtended), isExtended, engineSpeed};
    m_frames.append(frame);
    receive(frame, nowMs);
}

void CarBus::sendDue(qint64 nowMs)
{
    while (!m_answers.isEmpty() && m_answers.constFirst().dueMs <= nowMs) {
        const Answer due = m_answers.takeFirst();
        m_connections[due.unit].send(due.message, nowMs);
        collectFrames(); // before another answer of the same unit
    }
}

void CarBus::collectFrames()
{
    for (IsoTp &connection : m_connections)
        m_frames += connection.takeFrames();
}

qint64 CarBus::nextDueMs() const
{
    qint64 dueMs = m_otherTesterMs;
    const auto consider = [&dueMs](qint64 ms) {
        if (ms >= 0 && (dueMs < 0 || ms < dueMs))
            dueMs = ms;
    };
    if (!m_answers.isEmpty())
        consider(m_answers.constFirst().dueMs);
    for (const IsoTp &connection : m_connections)
        consider(connection.nextDueMs());
    return dueMs;
}

QVector<CanFrame> CarBus::takeFrames()
{
    return std::exchange(m_frames, {});
}

} // namespace ecu
