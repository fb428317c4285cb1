#pragma once

#include "scenario/expectations.h"
#include "scenario/scenario.h"

#include <QJsonObject>
#include <QStringList>

class Actions;
class Rig;
class Screen;
class Session;

/** The result of a scenario. */
struct ScenarioResult
{
    QString file;
    QString title;
    int expectations = 0;
    double seconds = 0;   // of real time
    QStringList failures; // a line each
    QStringList pictures; // of the screen at each failure, or of none

    QJsonObject toJson() const;
    static ScenarioResult fromJson(const QJsonObject &json);
};

/**
 * Plays a scenario on the virtual clock: drives to the time of each step, performs its action, and
 * waits up to a second of real time for an expectation, since an animation may still run.
 */
class ScenarioRun
{
public:
    /**
     * @param gallery  folder for pictures; without one only those of failures are taken, for
     *                 "scenario-failures"
     */
    ScenarioRun(const Scenario &scenario, const QString &gallery, Rig *rig);

    ScenarioResult play();

private:
    void driveTo(qint64 ms);
    void perform(const ScenarioStep &step);
    void expect(const ScenarioStep &step);
    void fail(const ScenarioStep &step, const QString &message);
    void takeWantedPicture(const QString &name);
    void takePicture(const QString &folder, const QString &name);

    const Scenario &m_scenario;
    const QString m_gallery;
    Screen *m_screen;
    Session *m_session;
    Actions *m_actions;
    Expectations m_expectations;
    ScenarioResult m_result;
    bool m_hasExpected = true; // since the last action
};
