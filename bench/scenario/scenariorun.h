#pragma once

#include "scenario/expectations.h"
#include "scenario/scenario.h"
#include "scenario/scenarioresult.h"

#include <QPixmap>

class Actions;
class Rig;
class Screen;
class Session;
struct Options;

/**
 * Plays a scenario on the virtual clock: drives to the time of each step, performs its action, and
 * waits up to a second of real time for an expectation, since an animation may still run.
 */
class ScenarioRun
{
public:
    /**
     * @param options  the folder of the gallery gets pictures; without one only those of failures
     *                 are taken, for "scenario-failures"
     */
    ScenarioRun(const Scenario &scenario, const Options &options, Rig *rig);

    ScenarioResult play();

private:
    void playStep(const ScenarioStep &step);
    void driveTo(qint64 ms);
    void beginActions();
    void perform(const ScenarioStep &step);
    void expect(const ScenarioStep &step);
    void fail(const ScenarioStep &step, const QString &message);
    void reportFailure(const QString &message);
    void takeWantedPicture(const QString &name);
    void takePicture(const QString &folder, const QString &name);

    const Scenario &m_scenario;
    const QString m_gallery;
    const bool m_isReported;
    Screen *m_screen;
    Session *m_session;
    Actions *m_actions;
    Expectations m_expectations;
    ScenarioResult m_result;
    QPixmap m_before;          // the screen before the last action, for a report
    bool m_hasExpected = true; // since the last action
};
