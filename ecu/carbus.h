#pragma once

#include "car.h"
#include "chance.h"
#include "live/isotp.h"

namespace ecu {

/**
 * The car's end of a CAN bus: its control units, and perhaps a tester that is plugged in as well.
 * Frames in, frames out; every call brings the time.
 */
class CarBus
{
public:
    struct Settings
    {
        bool isExtended = false; ///< identifiers of 29 bits instead of 11
        int units = 1;           ///< control units, at most 8
        int delayMs = 0;         ///< before each answer
        double lost = 0;         ///< share of the answers that are never sent
        int otherTesterMs = 0;   ///< a second tester requests the engine speed so often; 0 for none
        quint32 seed = 1;
    };
    static constexpr int MostUnits = 8;

    CarBus(const Car *car, const Settings &settings);

    bool isExtended() const { return m_settings.isExtended; }

    /** A frame that a tester has sent. */
    void receive(const module::CanFrame &frame, qint64 nowMs);
    void advance(qint64 nowMs);
    /** When advance() has something to do; -1 for never. */
    qint64 nextDueMs() const;
    /** What is sent on the bus, in order; each frame is taken once. */
    QVector<module::CanFrame> takeFrames();

    /** The identifier of requests for all control units. */
    static quint32 functionalId(bool isExtended);
    /** The identifiers of one control unit. */
    static module::IsoTp::Addresses addressesOf(int unit, bool isExtended);

private:
    struct Answer
    {
        int unit;
        qint64 dueMs;
        QByteArray message;
    };

    void request(int unit, const QByteArray &message, bool isForAll, qint64 nowMs);
    void askAsOtherTester(qint64 nowMs);
    void sendDue(qint64 nowMs);
    void collectFrames();

    const Car *m_car;
    Settings m_settings;
    Chance m_chance;
    QVector<module::IsoTp> m_connections; // by unit
    QVector<Answer> m_answers;            // in order of their time
    QVector<module::CanFrame> m_frames;
    qint64 m_otherTesterMs; // when it asks next
};

} // namespace ecu
