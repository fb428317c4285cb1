#pragma once

#include "adaptorlink.h"
#include "faults.h"
#include "vehiclesource.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

namespace module {

/**
 * Runs a source on a virtual clock: delivers each emission to the adaptor at its time, and each
 * command of the plugin to the source. It sleeps until the next emission is due; at unlimited speed
 * it returns to the event loop after every slice, so that pages paint.
 */
class Drive : public QObject
{
    Q_OBJECT
public:
    static constexpr double Unlimited = 0.0;

    explicit Drive(std::unique_ptr<VehicleSource> source, QObject *parent = nullptr);
    ~Drive() override;

    VehicleSource *source() const { return m_source.get(); }
    qint64 positionMs() const;
    /** The time of the emission that is being delivered or, between two of them, of the clock. */
    qint64 nowMs() const;
    /** Length of the drive, up to the limit; -1 when it never ends. */
    qint64 durationMs() const;
    bool isPlaying() const { return m_playing; }
    /** Factor of real time; `Unlimited` runs as fast as it can. 1 for a drive that happens now. */
    double speed() const { return m_speed; }
    void setSpeed(double factor);
    /** Stops at this drive time even when the source has more; -1 for no limit. */
    void setLimit(qint64 ms);
    /** Faults that are injected; none at first. */
    Faults &faults() { return m_faults; }
    const Faults &faults() const { return m_faults; }
    /** Whether commands of the plugin reach the source; they do at first. */
    void setAnswering(bool on) { m_answering = on; }
    /** Emits a signal that is not part of the drive, such as one sent by hand. */
    void send(const QByteArray &signal, const QVariantList &arguments);
    /** Emissions that the adaptor has no signal for. */
    int refused() const { return m_link.refused(); }
    /** Whether the current emission only brings a page of a playback up to date. */
    bool isRepeating() const { return m_isRepeating; }

public slots:
    void play();
    void pause();
    /** Pauses, and delivers what is due at the next moment. */
    void step();
    void seek(qint64 ms);

signals:
    void positionChanged(qint64 ms);
    /** The clock has reached this moment; the emissions of that moment follow. */
    void reached(qint64 ms);
    /** An action at the unit, from a recording. */
    void actionDue(const QString &word, const QVariantList &arguments);
    /** After a seek; the state snapshot of that moment follows. */
    void jumped(qint64 fromMs, qint64 toMs);
    void playingChanged(bool playing);
    /** The source has no more emissions, or the limit was reached. */
    void finished();

private:
    void advance();
    bool isOver() const;
    enum class Delivery { Complete, TurnUsedUp, Interrupted };
    Delivery deliverUntil(qint64 ms, qint64 realMs);
    void deliver(Emission emission, int delivery);
    void emitSignal(const Emission &emission);
    qint64 runningMs() const;
    qint64 clockMs() const;
    void schedule();
    void onCall(const QString &operation, const QVariantList &arguments);
    void answer();
    void restartClock();

    std::unique_ptr<VehicleSource> m_source;
    AdaptorLink m_link;
    Faults m_faults;
    QTimer m_timer;
    QElapsedTimer m_clock;   // real time since m_baseMs
    qint64 m_baseMs = 0;     // drive time when the clock was started
    qint64 m_positionMs = 0; // drive time of what was delivered last
    qint64 m_limitMs = -1;
    int m_delivery = 0; // counts deliveries and what interrupts them
    double m_speed = 1.0;
    bool m_delivering = false;
    bool m_isRepeating = false;
    bool m_playing = false;
    bool m_answering = true;
};

} // namespace module
