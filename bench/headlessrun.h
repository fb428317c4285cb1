#pragma once

#include <QObject>

class Rig;
struct Options;

namespace module {
class Drive;
}

/** A drive without a window: prints progress, then writes gallery and summary, and exits. */
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
 * Writes the requested results at the end of a drive, with or without a window.
 * @return false, with one line in error, when a file cannot be written
 */
bool writeResults(const Options &options, Rig *rig, QString *error);
