#pragma once

#include "obdmapper.h"
#include "quantities.h"
#include "vehiclesource.h"

namespace module {

/** More samples than this are not kept: they would take more memory than a bench can spare. */
constexpr int mostSamples = 20 * 1000 * 1000;

/** A drive as a file told it: samples in order of time, and what was met on the way. */
struct SampleLog
{
    QString title;
    QVector<Sample> samples;
    qint64 durationMs = 0;
    int badLines = 0;       ///< lines that could not be read
    int beyondCapacity = 0; ///< sound values that were not kept any more
    int droppedValues = 0;  ///< values that were missing, no numbers or beyond reason
    QStringList remarks;    ///< what else a person should know
    QJsonObject details;    ///< further totals of the file's kind

    int capacity = mostSamples;

    /** Keeps a value, or counts it where it is beyond reason or there are too many of them. */
    void add(qint64 atMs, Quantity quantity, double value);
};

/** Plays a recorded drive. */
class SampleSource : public VehicleSource
{
public:
    explicit SampleSource(SampleLog log);

    QString title() const override { return m_log.title; }
    qint64 durationMs() const override { return m_log.durationMs; }
    qint64 nextDueMs() const override;
    Emission take() override;
    void seek(qint64 ms) override;
    QStringList findings() const override;
    QJsonObject statistics() const override;

private:
    struct Range
    {
        int count = 0;
        double lowest = 0;
        double highest = 0;
    };
    QVector<Range> ranges() const;
    QVector<bool> presence() const;
    QVector<int> latestBefore(int end) const;
    void fill();

    SampleLog m_log;
    QVector<bool> m_present; // by quantity
    ObdMapper m_mapper;
    int m_index = 0;
    QVector<Emission> m_pending; // in reverse: the next one stands last
};

} // namespace module
