#pragma once

#include "live/canframe.h"
#include "outputfile.h"

#include <memory>

namespace module {

/**
 * Writes frames of a bus as a candump log, which can be played later. It replaces an older file
 * when the first frames are there.
 */
class CanLog
{
public:
    CanLog(const QString &path, const output::InputFiles &inputs);
    ~CanLog();

    /** The first failure, in one line that names the file; empty for none. */
    const QString &error() const { return m_file ? m_file->error() : m_refusal; }
    /** Keeps a frame. @param timeUs  since 1970 */
    void add(qint64 timeUs, const CanFrame &frame);
    /** Writes what was kept. */
    void flush();
    /** Writes the rest and closes the file. */
    void finish();

private:
    QString m_path;
    output::InputFiles m_inputs;
    QString m_refusal; // why the file cannot be begun
    std::unique_ptr<output::GrowingFile> m_file;
    QByteArray m_lines;
};

/** A line of a candump log, with its end. */
QByteArray candumpLine(qint64 timeUs, const CanFrame &frame);

} // namespace module
