#pragma once

#include "endsignals.h"

#include <QObject>

#include <memory>

class PictureTrail;
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
    void prepareReport();
    void showProgress(qint64 ms);
    void stop();
    void end();

    const Options &m_options;
    Rig *m_rig;
    module::Drive *m_drive;
    std::unique_ptr<PictureTrail> m_trail; // for a report
    EndRequest m_endRequest;
    int m_lastPercent = -1;
};
