#include "endsignals.h"
#include "exitguard.h"
#include "headlessrun.h"
#include "mapcheck.h"
#include "mapsuggestion.h"
#include "options.h"
#include "palette.h"
#include "pluginfile.h"
#include "recordingtools.h"
#include "results.h"
#include "runtimefolder.h"
#include "scenario/scenariosuite.h"
#include "service/moduleservice.h"
#include "session/rig.h"
#include "session/warnings.h"
#include "soundoutput.h"
#include "standardstreams.h"
#include "stepped/moduleprocess.h"
#include "tools/doctor.h"
#include "tools/platform.h"
#include "window/benchwindow.h"
#include "window/cardialogs.h"

#include <QApplication>
#include <QLoggingCategory>

#include <cstdio>

enum ExitCode { Done = 0, Differs = 1, Unusable = 2 };

static int fail(const QString &error)
{
    std::fprintf(stderr, "%s\n", qPrintable(error));
    return Unusable;
}

static int runMapTool(const Options &options)
{
    QString error;
    const module::CarFiles &car = options.setup.car;
    const auto lines = options.checksMap ? module::checkMap(car.dbc, car.map, &error)
                                         : module::suggestMap(car.dbc, &error);
    if (!lines)
        return fail(error);
    for (const QString &line : *lines)
        std::printf("%s\n", qPrintable(line));
    return Done;
}

/** Work that needs no head unit. */
static int runTool(const Options &options)
{
    QString error;
    if (!options.check.isEmpty())
        return checkPlugin(options.check, &error) ? Done : fail(error);
    if (!options.cut.isEmpty())
        return module::cutRecording(options.cut, options.fromMs, options.toMs, options.setup.record,
                                    &error)
                   ? Done
                   : fail(error);
    if (options.checksMap || options.suggestsMap)
        return runMapTool(options);
    QStringList report;
    const module::Comparison found =
        module::compareRecordings(options.diff[0], options.diff[1], &report, &error);
    if (found == module::Comparison::Unusable)
        return fail(error);
    for (const QString &line : qAsConst(report))
        std::printf("%s\n", qPrintable(line));
    return found == module::Comparison::Identical ? Done : Differs;
}

/** In a window, a log may be opened later. */
static bool hasLogForCar(const Options &options, QString *error)
{
    const Setup &setup = options.setup;
    const bool isFile =
        setup.source != QLatin1String("simulator") && setup.source != QLatin1String("none");
    if (!options.headless || setup.car.map.isEmpty() || isFile || options.isTool())
        return true;
    *error = QStringLiteral("--source: expected a candump log with --dbc and --map, got '%1'")
                 .arg(setup.source);
    return false;
}

/** The platform must be known before the application object. */
static bool readOptions(int argc, char *argv[], Options *options, QString *error)
{
    QCoreApplication application(argc, argv);
    if (!options->parse(QCoreApplication::arguments(), error))
        return false;
    if (options->plugin.isEmpty())
        options->plugin = usualPlugin();
    const bool needsScreen =
        options->text.isEmpty() && !options->isTool() && options->scripts.isEmpty();
    if (needsScreen && !options->headless && !platform::isExpected(options->platform)) {
        std::fprintf(stderr, "No display here: running as with --headless.\n");
        options->headless = true;
    }
    if (options->headless && !options->speedGiven && options->serve.isEmpty())
        options->setup.speed = module::Drive::Unlimited;
    return hasLogForCar(*options, error);
}

static int runHeadless(const Options &options, Rig *rig)
{
    rig->unit()->screen()->show();
    HeadlessRun run(options, rig);
    run.start();
    return QApplication::exec();
}

static int runWindow(const Options &options, Rig *rig)
{
    SoundOutput sound(rig->unit()->audio());
    BenchWindow window(options, rig);
    window.show(); // a page is opened on a screen that can be seen, as without a window
    window.start();
    const EndRequest endRequest;
    QObject::connect(&endRequest, &EndRequest::requested, &window, [&window] {
        window.close();
        QApplication::quit();
    });
    QApplication::exec();
    QString error;
    if (!options.gallery.isEmpty() && !window.writePictures(options.gallery, &error))
        return fail(error);
    return writeResults(options, rig, window.pictureTrail()) ? Done : Unusable;
}

/** Before there is an application object. @return null for a module in this process, or an error */
static std::unique_ptr<ModuleProcess> startModule(Setup *setup, QString *error)
{
    if (!setup->hasModuleProcess)
        return nullptr;
    auto process = ModuleProcess::start(*setup, error);
    if (process)
        setup->moduleAddress = process->address();
    return process;
}

/** One scenario from its start to its end, with a head unit of its own. */
static ScenarioResult playScenario(const Options &options, const Scenario &scenario, char *argv[])
{
    ScenarioResult result;
    Setup setup = scenario.setup;
    const auto process = startModule(&setup, &result.unusable);
    if (!result.unusable.isEmpty())
        return result;
    int argc = 1;
    QApplication application(argc, argv);
    const ExitGuard guard;
    const Warnings warnings;
    night::apply(&application, options.style);
    Rig rig(setup);
    if (!rig.open(options.plugin, &result.unusable))
        return result;
    rig.unit()->screen()->show();
    rig.begin(Replay::Beginning);
    return ScenarioRun(scenario, options, &rig).play();
}

/** What Qt reads when the application object is made. */
static bool prepareEnvironment(const Options &options, QString *error)
{
    if (options.headless || !options.scripts.isEmpty() || options.isTool())
        platform::useOffscreen();
    else if (!platform::use(options.platform, error))
        return false;
    if (!options.trace)
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    return true;
}

int main(int argc, char *argv[])
{
    ensureStandardStreams();
    ensureRuntimeFolder();
    QCoreApplication::setApplicationName(QStringLiteral("norda-bench"));
    Options options;
    QString error;
    if (!readOptions(argc, argv, &options, &error))
        return fail(error);
    if (!options.text.isEmpty()) {
        std::printf("%s", qPrintable(options.text));
        return Done;
    }
    if (!prepareEnvironment(options, &error) || !options.prepareResults(&error))
        return fail(error);
    if (options.isTool())
        return runTool(options);
    endsignals::install();
    if (!options.scripts.isEmpty()) {
        const SuiteOutcome outcome = playScenarios(
            options,
            [&](const Scenario &scenario) { return playScenario(options, scenario, argv); },
            &error);
        return outcome == SuiteOutcome::Unusable ? fail(error) : int(outcome);
    }

    const auto process = startModule(&options.setup, &error);
    if (!error.isEmpty())
        return fail(error);
    argc = 1; // the options decide, Qt reads none of them again
    QApplication application(argc, argv);
    const ExitGuard guard;
    const Warnings warnings;
    night::apply(&application, options.style);
    if (!options.headless || !options.report.isEmpty())
        options.setup.journalLimit = Journal::usualLimit;
    Rig rig(options.setup);
    const bool isOpen = rig.load(options.plugin, &error) &&
                        (options.headless ? rig.openSource(&error) : openFirst(&rig, &error));
    if (!isOpen)
        return fail(error);
    module::ModuleService service;
    if (!options.serve.isEmpty() && !service.open(options.serve, &error))
        return fail(QStringLiteral("--serve: ") + error);
    return options.headless ? runHeadless(options, &rig) : runWindow(options, &rig);
}
