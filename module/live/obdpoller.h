#pragma once

#include "live/livesettings.h"
#include "live/pollplan.h"

#include <QMap>

#include <optional>

namespace module {

/**
 * Decides what is asked next and when: first what the car has, then each value as often as it is
 * wanted and the car can bear. It has no clock and no link of its own.
 */
class ObdPoller
{
public:
    struct Settings
    {
        Asking asking = Asking::Auto;
        int requestsPerSecond = 20;
        QVector<bool> heard; ///< by quantity, what comes without being asked for
    };

    explicit ObdPoller(const Settings &settings);

    /** The link is ready; what the car has is asked anew. */
    void connected(qint64 nowMs);
    void disconnected();

    /** The next request, when one is due; it is outstanding until answered() or failed(). */
    std::optional<ObdRequest> takeRequest(qint64 nowMs);
    /** When takeRequest() has the next one; -1 for never, or while one is outstanding. */
    qint64 nextDueMs() const;
    void answered(const QVector<ObdAnswer> &answers, qint64 nowMs);
    void failed(ObdFailure failure, const QString &why, qint64 nowMs);

    /** Another tester asks, and may get in the way. */
    void otherTesterSeen(qint64 nowMs);
    /** The car sends of its own, which it may have stopped to do. */
    void carHeard(qint64 nowMs);

    /** The values since the last time, in order; each is taken once. */
    QVector<Sample> takeSamples();
    /** The stored trouble codes, when they have changed. */
    std::optional<QStringList> takeCodes();
    /** Whether a request is outstanding. */
    bool isAsking() const { return m_isOutstanding; }
    /** Whether the car answered nothing lately. */
    bool isCarSilent() const { return m_isCarSilent; }
    /** By quantity, whether the car reports it. */
    QVector<bool> present() const;
    /** What it does, or why it asks nothing, in one line. */
    QString state() const { return m_state; }

private:
    enum class Phase { Off, Discovering, Polling, Waiting, GivenUp };
    struct Entry
    {
        PollItem item;
        qint64 askedMs = 0;
        int failures = 0;
        qint64 pausedUntilMs = 0; ///< it does not answer, while others do
    };

    static qint64 dueMs(const Entry &entry);
    int mostOverdue() const;
    ObdRequest discover(qint64 nowMs);
    int entryOf(Quantity quantity) const;
    ObdRequest probe(qint64 nowMs);
    ObdRequest send(ObdRequest request, qint64 nowMs);
    void discovered(const QVector<ObdAnswer> &answers, qint64 nowMs);
    void continueDiscovery(qint64 nowMs);
    void beginPolling(qint64 nowMs);
    bool isLeavingTheBus() const;
    void takeAnswer(const QVector<ObdAnswer> &answers, qint64 nowMs);
    static std::optional<double> valueOf(const QVector<ObdAnswer> &answers, const PollItem &item);
    void takeValue(double value, qint64 nowMs);
    void takeLamp(const QVector<ObdAnswer> &answers, qint64 nowMs);
    void noteLamp(bool isOn, qint64 nowMs);
    void takeTroubleCodes(const QVector<ObdAnswer> &answers);
    void noteEngine(double rpm, qint64 nowMs);
    void noteFailure(qint64 nowMs);
    void wait(qint64 nowMs, const QString &why);
    void pace(qint64 nowMs);

    Settings m_settings;
    Phase m_phase = Phase::Off;
    SupportedPids m_supported;
    int m_block = 0;
    QVector<Entry> m_plan;
    bool m_isOutstanding = false;
    int m_entry = -1; // of the outstanding request, -1 for discovery
    qint64 m_sentMs = 0;
    qint64 m_nextMs = 0; // not before
    double m_answerMs = 0;
    int m_failures = 0;            // in a row
    int m_waits = 0;               // in a row
    qint64 m_standingSinceMs = -1; // without the engine
    bool m_isEngineOff = false;
    bool m_isCarSilent = false;
    bool m_isLampOn = false;
    QVector<Sample> m_samples;
    QMap<quint32, bool> m_lampOf;         // by unit
    QMap<quint32, QStringList> m_codesOf; // by unit
    QStringList m_codes;
    bool m_hasNewCodes = false;
    QString m_state;
};

} // namespace module
