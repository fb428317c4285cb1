#pragma once

#include "live/isotp.h"
#include "live/obdlink.h"

#include <map>

namespace module {

/**
 * Asks control units on a CAN bus by ISO 15765-4, with identifiers of 11 or 29 bits: whichever is
 * answered first. It has no clock and no bus of its own.
 */
class CanTester
{
public:
    /** Gives up what was asked before. */
    void ask(const ObdRequest &request, qint64 nowMs);
    /** A frame that somebody else has sent. */
    void receive(const CanFrame &frame, qint64 nowMs);
    void advance(qint64 nowMs);
    /** When advance() has something to do; -1 for never. */
    qint64 nextDueMs() const;

    /** The frames to send, in order; each is taken once. */
    QVector<CanFrame> takeFrames();
    QVector<ObdEvent> takeEvents();

private:
    void askAll(bool isExtended, qint64 nowMs);
    void askOne(qint64 nowMs);
    qint64 patienceMs() const;
    bool isMatching(const CanFrame &frame) const;
    IsoTp &connection(quint32 ecu, bool isExtended);
    void takeFrom(IsoTp *connection, quint32 ecu, qint64 nowMs);
    void takeAnswer(const ObdAnswer &answer, qint64 nowMs);
    bool isComplete() const;
    void noteAnswerTime(qint64 nowMs);
    void timeOut(qint64 nowMs);
    void finish();

    static constexpr double firstGuessMs = 250;

    bool m_isAsking = false;
    ObdRequest m_request;
    qint64 m_askedMs = 0;
    qint64 m_dueMs = 0;               // the end of waiting for answers
    double m_answerMs = firstGuessMs; // what an answer usually takes
    bool m_isFormatKnown = false;
    bool m_isExtended = false;
    std::map<quint32, IsoTp> m_connections; // by the identifier of the unit's answers
    QVector<ObdAnswer> m_answers;
    QString m_error; // of the transport, since the request
    QVector<CanFrame> m_frames;
    QVector<ObdEvent> m_events;
};

} // namespace module
