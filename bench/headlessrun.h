#pragma once

#include <QObject>

class Rig;
struct Options;

namespace module {
class Drive;
}

/** A drive without a window: progress while it lasts, then gallery, summary and the exit code. */
class HeadlessRun : public QObject
{
    Q_OBJECT
public:
    HeadlessRun(const Options &options, Rig *rig);
    ~HeadlessRun() override;

    void start();

private:
    void showProgress(qint64 ms);
    void end();
    void endOnSignals();

    const Options &m_options;
    Rig *m_rig;
    module::Drive *m_drive;
    int m_lastPercent = -1;
};

/**
 * Writes what was asked for at the end of a drive, in a window or without.
 * @return false, with one line in error, when a file cannot be written
 */
bool writeResults(const Options &options, Rig *rig, QString *error);
