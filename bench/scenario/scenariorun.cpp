#include "scenario/scenariorun.h"

#include "pages.h"
#include "screen.h"
#include "session/rig.h"
#include "session/session.h"
#include "session/warnings.h"
#include "statuscolumn.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QJsonArray>
#include <QTimer>

static constexpr int patienceMs = 1000;
static constexpr int pauseMs = 20;

QJsonObject ScenarioResult::toJson() const
{
    return {{"file", file},
            {"title", title},
            {"expectations", expectations},
            {"seconds", seconds},
            {"failures", QJsonArray::fromStringList(failures)},
            {"pictures", QJsonArray::fromStringList(pictures)}};
}

ScenarioResult ScenarioResult::fromJson(const QJsonObject &json)
{
    ScenarioResult result;
    result.file = json.value("file").toString();
    result.title = json.value("title").toString();
    result.expectations = json.value("expectations").toInt();
    result.seconds = json.value("seconds").toDouble();
    result.failures = json.value("failures").toVariant().toStringList();
    result.pictures = json.value("pictures").toVariant().toStringList();
    return result;
}

ScenarioRun::ScenarioRun(const Scenario &scenario, const QString &gallery, Rig *rig)
    : m_scenario(scenario)
    , m_gallery(gallery)
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
        if (step.word == QLatin1String("expect"))
            expect(step);
        else if (step.word == QLatin1String("wait"))
            settle(int(step.arguments[0].toDouble() * 1000));
        else if (step.word == QLatin1String("picture"))
            takeWantedPicture(step.arguments[0].toString());
        else
            perform(step);
    }
    if (!m_scenario.mayWarn && m_expectations.unexpectedWarnings() > 0)
        m_result.failures.append(QStringLiteral("%1: expected no warning, got %2")
                                     .arg(m_scenario.file, Warnings::first().join(", ")));
    m_result.seconds = double(clock.elapsed()) / 1000;
    return m_result;
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

void ScenarioRun::perform(const ScenarioStep &step)
{
    // What several actions in a row cause is expected after the last of them.
    if (m_hasExpected)
        m_expectations.mark();
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
            fail(step,
                 QStringLiteral("%1, seen: %2")
                     .arg(QString(step.text).replace(0, 6, QStringLiteral("expected")), seen));
            return;
        }
        settle(pauseMs);
    }
}

void ScenarioRun::fail(const ScenarioStep &step, const QString &message)
{
    m_result.failures.append(
        QStringLiteral("%1:%2: %3").arg(m_scenario.file).arg(step.line).arg(message));
    takePicture(m_gallery.isEmpty() ? QStringLiteral("scenario-failures") : m_gallery,
                QStringLiteral("%1-line-%2")
                    .arg(QFileInfo(m_scenario.file).completeBaseName())
                    .arg(step.line));
}

void ScenarioRun::takeWantedPicture(const QString &name)
{
    if (!m_gallery.isEmpty())
        takePicture(m_gallery, name);
}

void ScenarioRun::takePicture(const QString &folder, const QString &name)
{
    const QString file = QDir(folder).filePath(name + QStringLiteral(".png"));
    if (QDir().mkpath(folder) && m_screen->grab().save(file))
        m_result.pictures.append(file);
    else
        m_result.failures.append(
            QStringLiteral("%1: expected a picture file that can be written").arg(file));
}
