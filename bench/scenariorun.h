#pragma once

#include "expectations.h"
#include "operator.h"
#include "scenario.h"

#include <QJsonObject>
#include <QStringList>

/** How a scenario went. */
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
 * Plays a scenario on the virtual clock: lets the drive go on to each step's time, does what it
 * says, and waits a moment for what it expects where an animation may still be under way.
 */
class ScenarioRun
{
public:
    /** @param folder  where pictures go; it is made when there is one */
    ScenarioRun(const Scenario &scenario, const QString &folder, Screen *screen, HeadUnit *unit,
                AudioStage *stage, Session *session);

    ScenarioResult play();

private:
    void driveTo(qint64 ms);
    void perform(const ScenarioStep &step);
    void expect(const ScenarioStep &step);
    void fail(const ScenarioStep &step, const QString &message);
    QString takePicture(const QString &name) const;

    const Scenario &m_scenario;
    const QString m_folder;
    Screen *m_screen;
    HeadUnit *m_unit;
    Session *m_session;
    Operator m_operator;
    Expectations m_expectations;
    ScenarioResult m_result;
    bool m_hasExpected = true; // since the last deed
};
