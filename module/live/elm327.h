#pragma once

#include "live/elmreply.h"

namespace module {

/**
 * The conversation with an ELM327 adapter: identification, settings, then requests, each with the
 * number of frames to expect. It has no clock and no port of its own.
 */
class Elm327
{
public:
    /** Begins anew: the adapter is reset. */
    void start(qint64 nowMs);
    /** Only after it was ready, and while nothing is asked. */
    void ask(const ObdRequest &request, qint64 nowMs);
    void receive(const QByteArray &bytes, qint64 nowMs);
    void advance(qint64 nowMs);
    /** When advance() has something to do; -1 for never. */
    qint64 nextDueMs() const { return m_dueMs; }

    /** What to send; taken once. */
    QByteArray takeBytes();
    QVector<ObdEvent> takeEvents();
    /** The frames that the adapter has reported, for a log; each is taken once. */
    QVector<CanFrame> takeSeenFrames();
    /** How the adapter calls itself. */
    QString name() const { return m_name; }

private:
    enum class Phase { Idle, Identifying, Setting, Ready, Asking };

    void send(const QByteArray &command, qint64 nowMs);
    void identify(qint64 nowMs);
    void setNext(qint64 nowMs);
    void sendRequest(qint64 nowMs);
    qint64 patienceMs() const;
    QVector<ElmLine> linesOf(const QList<QByteArray> &reply) const;
    void takeReply(const QList<QByteArray> &reply, qint64 nowMs);
    void readIdentification(const QVector<ElmLine> &lines, qint64 nowMs);
    void readSetting(const QVector<ElmLine> &lines, qint64 nowMs);
    void readAnswers(const QVector<ElmLine> &lines, qint64 nowMs);
    bool refusesCount(const QVector<ElmLine> &lines);
    void timeOut(qint64 nowMs);
    void answer(const QVector<ObdAnswer> &answers, qint64 nowMs);
    void fail(ObdFailure failure, const QString &why);
    void lose(const QString &why);

    Phase m_phase = Phase::Idle;
    ElmReader m_reader;
    QByteArray m_command; // the last one
    QByteArray m_bytes;
    qint64 m_dueMs = -1; // the end of waiting for the prompt
    qint64 m_sentMs = 0; // of the command
    qint64 m_askedMs = 0;
    double m_answerMs = 0; // what an answer usually takes
    int m_tries = 0;       // of the command
    int m_setting = 0;
    bool m_countsFrames = true; // it takes the number of frames to expect
    bool m_isConnected = false; // a car has answered
    ObdRequest m_request;
    QString m_name;
    QVector<ObdEvent> m_events;
    QVector<CanFrame> m_seen;
};

} // namespace module
