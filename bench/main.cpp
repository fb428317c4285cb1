#include "audiostage.h"
#include "benchwindow.h"
#include "doctor.h"
#include "headlessrun.h"
#include "headunit.h"
#include "loopback.h"
#include "options.h"
#include "palette.h"
#include "recordingtools.h"
#include "runtimefolder.h"
#include "scenariosuite.h"
#include "screen.h"
#include "session.h"
#include "soundoutput.h"
#include "statuscolumn.h"
#include "warnings.h"

#include <QApplication>
#include <QDir>
#include <QLoggingCategory>

#include <cstdio>

enum ExitCode { Done = 0, Differs = 1, Unusable = 2 };

static int refuse(const QString &error)
{
    std::fprintf(stderr, "%s\n", qPrintable(error));
    return Unusable;
}

/** What is done without a head unit. */
static int workAsTool(const Options &options)
{
    QString error;
    if (!options.check.isEmpty())
        return checkPlugin(options.check, &error) ? Done : refuse(error);
    if (!options.cut.isEmpty())
        return module::cutRecording(options.cut, options.fromMs, options.toMs, options.record,
                                    &error)
                   ? Done
                   : refuse(error);
    QStringList report;
    const module::Comparison found =
        module::compareRecordings(options.diff[0], options.diff[1], &report, &error);
    if (found == module::Comparison::Unusable)
        return refuse(error);
    for (const QString &line : qAsConst(report))
        std::printf("%s\n", qPrintable(line));
    return found == module::Comparison::Alike ? Done : Differs;
}

/** The plugin of the same build, or the installed one. */
static QString ownPlugin()
{
    const QDir folder(QCoreApplication::applicationDirPath());
    const QString built = folder.filePath(QStringLiteral("../plugins/libnordaPlugin.so"));
    const QString installed = folder.filePath(QStringLiteral(NORDA_INSTALLED_PLUGIN));
    return QDir::cleanPath(QFile::exists(built) ? built : installed);
}

/** The scale and the platform must be known before the application object. */
static bool readOptions(int argc, char *argv[], Options *options, QString *error)
{
    QCoreApplication application(argc, argv);
    if (!options->parse(QCoreApplication::arguments(), error))
        return false;
    if (options->plugin.isEmpty())
        options->plugin = ownPlugin();
    const bool hasDisplay = !options->platform.isEmpty() || qEnvironmentVariableIsSet("DISPLAY") ||
                            qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
                            qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    const bool needsScreen =
        options->text.isEmpty() && !options->isTool() && options->scripts.isEmpty();
    if (needsScreen && !options->headless && !hasDisplay) {
        std::fprintf(stderr, "No display here: running as with --headless.\n");
        options->headless = true;
    }
    if (options->headless && !options->speedGiven)
        options->speed = module::Drive::Unlimited;
    return true;
}

static std::unique_ptr<Session> openSession(const Options &options, QString *error)
{
    auto source = module::openSource(options.source, error, options.trim);
    if (!source)
        return nullptr;
    auto session = std::make_unique<Session>(std::move(source));
    session->drive()->setSpeed(options.speed);
    session->drive()->setLimit(options.durationMs);
    session->drive()->faults() = options.faults;
    if (!options.record.isEmpty() && !session->record(options.record, options.recordLimit, error))
        return nullptr;
    return session;
}

/** A recording that opens its pages itself is left to do so, unless another page is asked for. */
static void openFirstPage(const Options &options, HeadUnit *unit, Session *session)
{
    if (options.windowGiven || !session->drive()->source()->opensPages())
        session->open(unit, options.window);
}

static int runHeadless(const Options &options, Screen *screen, HeadUnit *unit, AudioStage *stage,
                       Session *session)
{
    screen->show();
    session->watch(unit);
    openFirstPage(options, unit, session);
    session->feed(screen->camera());
    session->lead(stage);
    HeadlessRun run(options, screen, unit, stage, session);
    QObject::connect(session, &Session::noticed,
                     [](const QString &line) { std::fprintf(stderr, "%s\n", qPrintable(line)); });
    run.start();
    return QApplication::exec();
}

static int runWindow(const Options &options, Screen *screen, HeadUnit *unit, AudioStage *stage,
                     std::unique_ptr<Session> session)
{
    SoundOutput sound(stage);
    BenchWindow window(options, screen, unit, stage);
    window.show(); // a page is opened on a screen that can be seen, as without a window
    openFirstPage(options, unit, session.get());
    window.start(std::move(session));
    const int code = QApplication::exec();
    QString error;
    if (!options.gallery.isEmpty() && !window.writePictures(options.gallery, &error))
        return refuse(error);
    if (!writeResults(options, screen, unit, stage, window.session(), &error))
        return refuse(error);
    return code;
}

/** One scenario from its start to its end, with a head unit of its own. */
static ScenarioResult playScenario(const Options &options, const Scenario &scenario, int argc,
                                   char *argv[])
{
    QApplication application(argc, argv);
    const Warnings warnings;
    night::apply(&application, options.style);
    Screen screen;
    HeadUnit unit(&screen);
    ScenarioResult result;
    QString error;
    if (!unit.load(options.plugin, &error)) {
        result.failures.append(error);
        return result;
    }
    AudioStage stage(&unit);
    QObject::connect(&stage, &AudioStage::changed, screen.statusColumn(),
                     [&] { screen.statusColumn()->setVolumeShown(stage.isVolumeShown()); });
    auto source = module::openSource(scenario.source, &error, scenario.trim);
    if (!source) {
        result.failures.append(error);
        return result;
    }
    Session session(std::move(source));
    session.journal()->setLimit(Journal::usualLimit);
    session.drive()->setSpeed(module::Drive::Unlimited);
    session.drive()->faults() = scenario.faults;
    session.feed(screen.camera());
    session.lead(&stage);
    screen.show();
    return ScenarioRun(scenario, options.gallery, &screen, &unit, &stage, &session).play();
}

int main(int argc, char *argv[])
{
    ensureRuntimeFolder();
    QCoreApplication::setApplicationName(QStringLiteral("norda-bench"));
    Options options;
    QString error;
    if (!readOptions(argc, argv, &options, &error))
        return refuse(error);
    if (!options.text.isEmpty()) {
        std::printf("%s", qPrintable(options.text));
        return Done;
    }
    if (options.headless || !options.scripts.isEmpty())
        qputenv("QT_QPA_PLATFORM", "offscreen");
    else if (!options.platform.isEmpty())
        qputenv("QT_QPA_PLATFORM", options.platform.toLocal8Bit());
    if (qgetenv("QT_QPA_PLATFORM").startsWith("vnc"))
        listenOnLoopbackOnly();
    if (!qFuzzyCompare(options.scale, 1.0))
        qputenv("QT_SCALE_FACTOR", QByteArray::number(options.scale));
    if (!options.trace)
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    if (!options.makeFolders(&error))
        return refuse(error);
    if (options.isTool())
        return workAsTool(options);
    if (!options.scripts.isEmpty()) {
        const SuiteOutcome outcome = playScenarios(
            options,
            [&](const Scenario &scenario) { return playScenario(options, scenario, argc, argv); },
            &error);
        return outcome == SuiteOutcome::Unusable ? refuse(error) : int(outcome);
    }

    QApplication application(argc, argv);
    const Warnings warnings;
    night::apply(&application, options.style);
    Screen screen;
    HeadUnit unit(&screen);
    if (!unit.load(options.plugin, &error))
        return refuse(error);
    AudioStage stage(&unit);
    QObject::connect(&stage, &AudioStage::changed, screen.statusColumn(),
                     [&] { screen.statusColumn()->setVolumeShown(stage.isVolumeShown()); });
    std::unique_ptr<Session> session = openSession(options, &error);
    if (!session)
        return refuse(error);
    return options.headless ? runHeadless(options, &screen, &unit, &stage, session.get())
                            : runWindow(options, &screen, &unit, &stage, std::move(session));
}
