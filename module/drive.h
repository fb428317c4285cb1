#pragma once

#include "vehiclesource.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

namespace module {

class AdaptorLink;

/**
 * Drives a source: a virtual clock that hands each emission to the adaptor when its time has come
 * and each command of the plugin to the source. It sleeps until the next emission is due; at
 * unlimited speed it returns to the event loop after every slice, so that screens paint.
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
    qint64 durationMs() const { return m_source->durationMs(); }
    bool isPlaying() const { return m_playing; }
    /** Factor of real time; `Unlimited` runs as fast as it can. */
    double speed() const { return m_speed; }
    void setSpeed(double factor);
    /** Stops at this drive time even when the source has more; -1 for no limit. */
    void setLimit(qint64 ms);

public slots:
    void play();
    void pause();
    void seek(qint64 ms);

signals:
    /** The position moved; at most some thirty times a second while playing. */
    void positionChanged(qint64 ms);
    void playingChanged(bool playing);
    /** The source has no more to give, or the limit was reached. */
    void finished();
};

} // namespace module
