#pragma once

#include "obdmapper.h"
#include "quantities.h"
#include "vehiclesource.h"

namespace module {

/** A drive as a file told it: samples in order of time, and what was met on the way. */
struct SampleLog
{
    QString title;
    QVector<Sample> samples;
    qint64 durationMs = 0;
    int badLines = 0;      ///< lines that could not be read
    int droppedValues = 0; ///< values that were missing, no numbers or beyond reason
    QStringList remarks;   ///< what else a person should know
    QJsonObject details;   ///< further totals of the file's kind

    /** Keeps a value, or counts it as dropped when it is beyond reason. */
    void add(qint64 atMs, Quantity quantity, double value);
};

/** More samples than this are not kept: a day of ten values a second. */
constexpr int mostSamples = 20 * 1000 * 1000;

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
    void fill();

    SampleLog m_log;
    ObdMapper m_mapper;
    int m_index = 0;
    QVector<Emission> m_pending; // in reverse: the next one stands last
};

} // namespace module
