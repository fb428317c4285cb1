#pragma once

#include "carfiles.h"
#include "pagemapper.h"
#include "quantities.h"
#include "vehiclesource.h"

#include <optional>

namespace module {

/** Further samples are not kept, to limit the memory in use. */
constexpr int mostSamples = 20 * 1000 * 1000;

/** A drive read from a file: samples in order of time, and what else was found. */
struct SampleLog
{
    QString title;
    QVector<Sample> samples;
    QVector<Emission> texts; ///< for the pages, in order of time
    qint64 durationMs = 0;
    int badLines = 0;       ///< lines that could not be read
    int beyondCapacity = 0; ///< good values that were not kept
    int droppedValues = 0;  ///< values that were missing, no numbers or out of range
    QStringList remarks;    ///< further findings, for a person
    QJsonObject details;    ///< further totals of this file format

    int capacity = mostSamples;

    /** Keeps a value; one that is out of range or beyond the capacity is only counted. */
    void add(qint64 atMs, Quantity quantity, double value);
    /** Keeps what the vehicle page tells of trouble codes. */
    void addCodes(qint64 atMs, const QStringList &codes);
    /** Keeps that a quantity has gone missing. */
    void addMissing(qint64 atMs, Quantity quantity);
};

/**
 * Reads a drive of measured values: an OBD-II CSV export, or a candump log.
 * @param car    what explains a candump log of a car's own frames
 * @param error  one line that names the file, when it holds none
 */
std::optional<SampleLog> readSamples(const QString &path, const CarFiles &car, QString *error);

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
    QVector<Sample> samplesOf(qint64 afterMs, qint64 untilMs) const override;
    QStringList findings() const override;
    QVector<Findings> findingsByPage() const override;
    QJsonObject statistics() const override;

private:
    struct Range
    {
        int count = 0;
        int missing = 0; ///< how often it has gone missing
        double lowest = 0;
        double highest = 0;

        QString text(Quantity quantity) const;
    };
    QVector<Range> ranges() const;
    QStringList remarks() const;
    QVector<bool> presence() const;
    QVector<int> latestBefore(int end) const;
    void append(const Sample &sample);
    bool isTextNext() const;
    void fill();

    SampleLog m_log;
    QVector<bool> m_present; // by quantity
    QVector<Range> m_ranges; // by quantity
    PageMapper m_mapper;
    int m_index = 0;
    int m_textIndex = 0;
    QVector<Emission> m_pending; // in reverse: the next one is the last
};

} // namespace module
