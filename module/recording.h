#pragma once

#include "lastsaid.h"
#include "vehiclesource.h"

#include <QFile>
#include <QSet>

namespace module {

class LineReader;

/**
 * Writes everything that crosses the adaptor, both ways, as JSON lines: a header, then
 * {"t":ms,"signal":name,"args":[...]} and {"t":ms,"call":operation,"args":[...]}, and an end line.
 * Byte arrays are hex texts, null for a null array. What somebody did at the unit stands between
 * them as {"t":ms,"action":word,"args":[...]}, in the words of a scenario.
 */
class RecordingWriter
{
public:
    /** @param error  one line that names the file, when it cannot be written */
    RecordingWriter(const QString &path, const QString &title, QString *error);
    ~RecordingWriter();

    bool isOpen() const { return m_file.isOpen(); }
    /**
     * What the recording may take on the disk, in bytes; 0 for no limit. When half of it is full,
     * the file becomes "NAME.1.jsonl" beside it, in place of an older one, and a new part begins
     * with what brings a screen up to date.
     */
    void setLimit(qint64 bytes) { m_limit = bytes; }
    /** What a person should know, in one line, once; mostly nothing. */
    QString takeNotice();
    void writeSignal(qint64 ms, const QByteArray &name, const QVariantList &arguments);
    void writeCall(qint64 ms, const QString &operation, const QVariantList &arguments);
    void writeAction(qint64 ms, const QString &word, const QVariantList &arguments);
    /** The page that a new part begins on. */
    void setPage(int id) { m_page = id; }
    /** Another drive follows, whose times count from 0. @param ms  where the one before ended */
    void beginNextDrive(qint64 ms) { m_beginMs -= ms; }
    /** Notes the length of the drive; the recording is complete with it. */
    void finish(qint64 ms);

private:
    void write(qint64 ms, QJsonObject line);
    void begin(const QString &title);
    void beginNextPart(qint64 ms);

    QFile m_file;
    QString m_title;
    QString m_notice;
    LastSaid<Emission> m_last;
    int m_page = -1;
    qint64 m_limit = 0;
    qint64 m_beginMs = 0; // what the part's times count from
    bool m_isBroken = false;
};

/** A later moment in a recording is a damaged one. */
constexpr double longestDriveMs = 30 * 24 * 3600e3;

/** More signals than this are not kept: they would take more memory than a bench can spare. */
constexpr int mostRecordedSignals = 2 * 1000 * 1000;

/** Plays the signals of a recording: the same ones, in the same order, at the same times. */
class RecordingSource : public VehicleSource
{
public:
    /** @return null, and one line that says why, for a file that is no recording */
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
    void read(const QJsonObject &line);
    bool readSignal(const QJsonObject &line, Emission *emission);
    void readAction(const QJsonObject &line, qint64 ms);
    bool keep(const Emission &emission);
    QVector<int> saidBefore(int end) const;

    QString m_title;
    QVector<Emission> m_emissions;
    QVector<Emission> m_caughtUp; // after a seek: what brings a screen up to date, in reverse
    QSet<QByteArray> m_names;     // of the signals that occur
    int m_index = 0;
    int m_begin = 0; // the emissions before only catch up
    qint64 m_durationMs = 0;
    int m_signals = 0;
    int m_calls = 0;
    int m_badLines = 0;
    int m_notKept = 0;
};

/** Whether a file's first line is a recording's header. */
bool isRecordingHeader(const QByteArray &line);
/** The first line of a recording. */
QByteArray recordingHeader(const QString &title);
/**
 * Takes the header off a file.
 * @param error  one line that names the file, when it is no recording of this version
 */
bool readRecordingHeader(LineReader *lines, const QString &path, QString *error);

} // namespace module
