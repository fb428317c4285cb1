#pragma once

#include "live/canframe.h"
#include "outputfile.h"

#include <QElapsedTimer>

namespace module {

/** Writes frames of a bus as a candump log, which can be played later. */
class CanLog
{
public:
    CanLog(const QString &path, const output::InputFiles &inputs);
    ~CanLog();

    /** The first failure, in one line that names the file; empty for none. */
    const QString &error() const { return m_file.error(); }
    /** Keeps a frame, with the time of now. */
    void add(const CanFrame &frame);
    /** Writes what was kept. */
    void flush();

private:
    output::GrowingFile m_file;
    QByteArray m_lines;
    qint64 m_startUs; // of the day's clock; from there on no step of that clock counts
    QElapsedTimer m_clock;
};

/** A line of a candump log, with its end. */
QByteArray candumpLine(qint64 timeUs, const CanFrame &frame);

} // namespace module
