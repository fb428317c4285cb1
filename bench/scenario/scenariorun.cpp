#include "scenario/scenariorun.h"

#include "options.h"
#include "pages.h"
#include "report/reportpage.h"
#include "screen.h"
#include "session/rig.h"
#include "session/session.h"
#include "session/warnings.h"
#include "statuscolumn.h"
#include "tools/picturefile.h"
#include "tools/stillscreen.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QTimer>

static constexpr int patienceMs = 1000;
static constexpr int settleMs = 20;
static const QLatin1String expectWord("expect");

ScenarioRun::ScenarioRun(const Scenario &scenario, const Options &options, Rig *rig)
    : m_scenario(scenario)
    , m_gallery(options.gallery)
    , m_isReported(!options.report.isEmpty())
    , m_screen(rig->unit()->screen())
    , m_session(rig->session())
    , m_actions(rig->actions())
    , m_expectations(rig->unit(), rig->session())
{
    m_result.file = scenario.file;
    m_result.title = scenario.title;
    m_result.expectations = scenario.expectations();
    m_screen->statusColumn()->setTime(QTime(21, 40)); // pictures are compared with each other
}

static void settle(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

ScenarioResult ScenarioRun::play()
{
    QElapsedTimer clock;
    clock.start();
    for (const ScenarioStep &step : m_scenario.steps) {
        driveTo(step.ms);
        m_result.steps.append(
            {step.line, step.ms, step.text, step.word == expectWord, {}, {}, {}, {}});
        playStep(step);
    }
    if (!m_isReported)
        m_result.steps.clear();
    if (!m_scenario.mayWarn && m_expectations.unexpectedWarnings() > 0)
        m_result.failures.append(QStringLiteral("%1: expected no warning, got %2")
                                     .arg(m_scenario.file, Warnings::first().join(", ")));
    m_result.seconds = double(clock.elapsed()) / 1000;
    return m_result;
}

void ScenarioRun::playStep(const ScenarioStep &step)
{
    if (step.word == expectWord)
        expect(step);
    else if (step.word == QLatin1String("wait"))
        settle(int(step.arguments[0].toDouble() * 1000));
    else if (step.word == QLatin1String("picture"))
        takeWantedPicture(step.arguments[0].toString());
    else
        perform(step);
}

/** Drives up to a moment of the session at unlimited speed. */
void ScenarioRun::driveTo(qint64 ms)
{
    module::Drive *drive = m_session->drive();
    const qint64 left = ms - m_session->nowMs();
    if (left > 0) {
        QEventLoop loop;
        QObject::connect(drive, &module::Drive::finished, &loop, &QEventLoop::quit);
        drive->setLimit(drive->positionMs() + left);
        drive->play();
        loop.exec();
        drive->setLimit(-1);
    }
    QCoreApplication::processEvents();
}

void ScenarioRun::beginActions()
{
    m_expectations.mark();
    if (m_isReported)
        m_before = m_screen->grab();
}

void ScenarioRun::perform(const ScenarioStep &step)
{
    // What several actions in a row cause is expected after the last of them.
    if (m_hasExpected)
        beginActions();
    m_hasExpected = false;
    QString error;
    if (!m_actions->perform(step.word, step.arguments, &error))
        fail(step, error);
    QCoreApplication::processEvents();
}

void ScenarioRun::expect(const ScenarioStep &step)
{
    m_hasExpected = true;
    QString seen;
    QElapsedTimer patience;
    patience.start();
    while (!m_expectations.holds(step.arguments, &seen)) {
        if (patience.hasExpired(patienceMs)) {
            m_result.steps.last().seen = seen;
            fail(step,
                 QStringLiteral("%1, seen: %2")
                     .arg(QString(step.text).replace(0, 6, QStringLiteral("expected")), seen));
            return;
        }
        settle(settleMs);
    }
    m_result.steps.last().seen = seen;
}

void ScenarioRun::fail(const ScenarioStep &step, const QString &message)
{
    m_result.failures.append(
        QStringLiteral("%1:%2: %3").arg(m_scenario.file, QString::number(step.line), message));
    reportFailure(message);
    takePicture(
        m_gallery.isEmpty() ? QStringLiteral("scenario-failures") : m_gallery,
        QStringLiteral("%1-line-%2")
            .arg(QFileInfo(m_scenario.file).completeBaseName(), QString::number(step.line)));
}

void ScenarioRun::reportFailure(const QString &message)
{
    StepResult &step = m_result.steps.last();
    step.failure = message;
    if (!m_isReported)
        return;
    step.after = pictureForReport(m_screen->grab().toImage());
    if (!m_before.isNull())
        step.before = pictureForReport(m_before.toImage());
}

void ScenarioRun::takeWantedPicture(const QString &name)
{
    if (m_gallery.isEmpty())
        return;
    holdStill(m_screen);
    takePicture(m_gallery, name);
}

void ScenarioRun::takePicture(const QString &folder, const QString &name)
{
    const QString file = QDir(folder).filePath(name + QStringLiteral(".png"));
    QString error;
    QDir().mkpath(folder); // otherwise the picture says what is wrong
    if (writePicture(file, m_screen->grab().toImage(), m_scenario.setup.inputs, &error))
        m_result.pictures.append(file);
    else
        m_result.failures.append(error);
}
