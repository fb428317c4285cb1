#pragma once

#include "outputfile.h"
#include "snapshot.h"
#include "vehiclesource.h"

#include <QSet>

namespace module {

class LineReader;

/**
 * Writes everything that crosses the adaptor, both ways, as JSON lines: a header, then
 * {"t":ms,"signal":name,"args":[...]} and {"t":ms,"call":operation,"args":[...]}, and an end line.
 * Byte arrays are hex texts, null for a null array. Actions at the unit are
 * {"t":ms,"action":word,"args":[...]}, in the words of a scenario.
 */
class RecordingWriter
{
public:
    /**
     * @param error   one line that names the file, when it cannot be written
     * @param inputs  what the run reads: neither the recording nor a part of it replaces that
     */
    RecordingWriter(const QString &path, const QString &title, QString *error,
                    const output::InputFiles &inputs = {});
    ~RecordingWriter();

    /** Whether it is written: it was opened, nothing failed since, and it is not finished. */
    bool isOpen() const { return m_file && m_file->isOpen(); }
    /** Whether something could not be written. The notice has the reason. */
    bool hasFailed() const { return m_hasFailed; }
    /**
     * The disk space of the recording, in bytes; 0 for no limit. When half of it is used, the file
     * is renamed to "NAME.1.jsonl", replacing an older one, and a new part begins with a state
     * snapshot.
     */
    void setLimit(qint64 bytes) { m_limit = bytes; }
    const QString &path() const { return m_path; }
    /** Of its current part, in bytes. */
    qint64 size() const { return m_file ? m_file->size() : 0; }
    /** A message for the user, in one line; empty when there is none. Returned once. */
    QString takeNotice();
    void writeSignal(qint64 ms, const QByteArray &name, const QVariantList &arguments);
    void writeCall(qint64 ms, const QString &operation, const QVariantList &arguments);
    void writeAction(qint64 ms, const QString &word, const QVariantList &arguments);
    /** The page that a new part begins on. */
    void setPage(int id) { m_page = id; }
    /** For a recording that begins within a drive: what brings a unit to this moment, its time 0.
     */
    void beginAt(qint64 ms, const QVector<Emission> &state);
    /** Another drive follows, whose times count from 0. @param ms  the end of the one before */
    void beginNextDrive(qint64 ms) { m_beginMs -= ms; }
    /** Writes the end line, which holds the length of the drive. */
    void finish(qint64 ms);

private:
    void write(qint64 ms, QJsonObject line);
    void begin(const QString &title);
    void beginNextPart(qint64 ms);
    void writeCatchUp(qint64 ms);
    void check(qint64 ms);

    std::unique_ptr<output::GrowingFile> m_file;
    QString m_path;
    QString m_title;
    output::InputFiles m_inputs;
    QString m_notice;
    Snapshot<Emission> m_state;
    int m_page = -1;
    qint64 m_limit = 0;
    qint64 m_beginMs = 0; // the time that is 0 in the current part
    bool m_hasFailed = false;
};

/** A later time in a recording is an error. */
constexpr double longestDriveMs = 30 * 24 * 3600e3;

/** Further signals are not kept, to limit the memory in use. */
constexpr int mostRecordedSignals = 2 * 1000 * 1000;

/** Plays the signals of a recording: the same ones, in the same order, at the same times. */
class RecordingSource : public VehicleSource
{
public:
    /** @return null, and one line with the reason, for a file that is no recording */
    static std::unique_ptr<RecordingSource> open(const QString &path, QString *error);

    QString title() const override { return m_title; }
    qint64 durationMs() const override { return m_durationMs; }
    qint64 nextDueMs() const override;
    Emission take() override;
    void seek(qint64 ms) override;
    bool opensPages() const override;
    bool isCatchingUp() const override { return m_index < m_begin; }
    QStringList findings() const override;
    QJsonObject statistics() const override;

private:
    struct Moment
    {
        qint64 ms;
        bool isCall;
        int emission; // index of what was read at this time, or later
    };
    void read(const QJsonObject &line, QVector<Moment> *moments);
    bool readEmission(qint64 ms, const QJsonObject &line);
    bool readSignal(qint64 ms, const QJsonObject &line);
    void keep(const Emission &emission);
    void accept(const QVector<Moment> &moments);
    void accept(const Moment &moment, const QVector<Emission> &emission);
    QVector<int> stateBefore(int end) const;

    QString m_title;
    QVector<Emission> m_emissions;
    QVector<Emission> m_state; // after a seek: the snapshot, as far as it is not taken yet
    QSet<QByteArray> m_names;  // of the signals that occur
    int m_index = 0;
    int m_begin = 0; // the emissions before are the catch-up
    qint64 m_durationMs = 0;
    int m_signals = 0;
    int m_calls = 0;
    int m_badLines = 0;
    int m_notKept = 0;
};

/** Whether this is the header line of a recording. */
bool isRecordingHeader(const QByteArray &line);
/** Whether this is a later line of a recording, as far as one can tell without the header. */
bool isRecordingLine(const QByteArray &line);
/** The header line of a recording. */
QByteArray recordingHeader(const QString &title);
/**
 * Reads the header line of a file.
 * @param error  one line that names the file, when it is no recording of this version
 */
bool readRecordingHeader(LineReader *lines, const QString &path, QString *error);

} // namespace module
