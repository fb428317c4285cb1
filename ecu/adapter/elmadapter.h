#pragma once

#include "adapter/adapterstate.h"
#include "adapter/badanswers.h"
#include "carbus.h"

namespace ecu {

/**
 * An adapter with the command set of an ELM327, plugged into a car's bus. Characters in, characters
 * out; every call brings the time.
 */
class ElmAdapter
{
public:
    ElmAdapter(const Car *car, CarBus *bus, const BadAnswers &badAnswers = {});

    void receive(const QByteArray &characters, qint64 nowMs);
    void advance(qint64 nowMs);
    /** When advance() has something to do; -1 for never. */
    qint64 nextDueMs() const;
    /** What it sends; taken once. */
    QByteArray takeOutput();

private:
    /** A request that is on the bus. */
    struct Exchange
    {
        BadAnswers::Row fault;
        int expected; ///< frames, 0 for as many as come
        int frames;
        qint64 lastMs; ///< of the request, then of its frames
        qint64 dueMs;  ///< the end of waiting
        bool isSearching;
    };

    void receiveCharacter(char character, qint64 nowMs);
    void carryOutLine(QByteArray line, qint64 nowMs);
    void begin(const QByteArray &digits, qint64 nowMs);
    bool failsAtOnce(const BadAnswers::Row &fault);
    void send(const QByteArray &data, qint64 nowMs);
    void show(const module::CanFrame &frame, qint64 nowMs);
    void controlFlow(const module::CanFrame &frame, qint64 nowMs);
    qint64 waitMs() const;
    void learn(qint64 latencyMs);
    void finish();

    void print(const QByteArray &line);
    void prompt();

    const Car *m_car;
    CarBus *m_bus;
    BadAnswers m_badAnswers;
    AdapterState m_state;
    QByteArray m_line;
    QByteArray m_lastLine;
    QByteArray m_out;
    std::optional<Exchange> m_exchange;
    qint64 m_latencyMs = -1; // of the car's answers, lately; -1 before the first
};

} // namespace ecu
