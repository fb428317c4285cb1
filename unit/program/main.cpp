#include "endsignals.h"
#include "exitguard.h"
#include "fullscreen.h"
#include "headunit.h"
#include "palette.h"
#include "program/arguments.h"
#include "program/configuration.h"
#include "program/firstpaint.h"
#include "program/lastpage.h"
#include "program/servicemanager.h"
#include "reversecamera.h"
#include "runtimefolder.h"
#include "serviceconnection.h"
#include "soundoutput.h"
#include "standardstreams.h"
#include "translator.h"

#include <QApplication>
#include <QFile>
#include <QLoggingCategory>

#include <cstdio>
#include <optional>
#include <unistd.h>

enum ExitCode { Done = 0, Unusable = 2 };

static int fail(const QString &error)
{
    std::fprintf(stderr, "norda-unit: %s\n", qPrintable(error));
    return Unusable;
}

/** The application's options are known before there is an application. */
static bool readConfiguration(const Arguments &arguments, char *argv[],
                              Configuration *configuration, QString *error)
{
    int argc = 1;
    const QCoreApplication application(argc, argv);
    return configuration->read(arguments.own, error);
}

/** What Qt and the host read when they start. */
static void prepareEnvironment(const Configuration &configuration)
{
    if (!configuration.data.isEmpty())
        qputenv("NORDA_HOST_ROOT", QFile::encodeName(configuration.data));
    // The pages give their letters' sizes in points, and their places in pixels: those of a display
    // that does not state its size.
    if (!qEnvironmentVariableIsSet("QT_FONT_DPI"))
        qputenv("QT_FONT_DPI", "100");
    qputenv("QT_QPA_NO_SIGNAL_HANDLER", "1"); // Qt's own would end the program at once
    const QByteArray hidesCursor = configuration.showsCursor ? "0" : "1";
    qputenv("QT_QPA_FB_HIDECURSOR", hidesCursor);
    qputenv("QT_QPA_EGLFS_HIDECURSOR", hidesCursor);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
}

/** Qt aborts where it finds no platform to draw on. */
static void endOnFatal(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtFatalMsg)
        ::_exit(fail(QStringLiteral("-platform: expected a Qt platform that works here")));
    std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
}

/** What Qt has left of its options, or found to draw on; empty where all is well. */
static QString faultOfStart(const Arguments &arguments)
{
    if (arguments.qtCount > 1)
        return QStringLiteral("%1: expected an option of Qt, or one of the unit with two dashes")
            .arg(QString::fromLocal8Bit(arguments.qt[1]));
    if (!QGuiApplication::primaryScreen())
        return QStringLiteral("-platform: expected a display, found none");
    return {};
}

/** Opens the first page. @return whether there is one */
static bool open(WindowStack *windows, int page)
{
    windows->openWindow(page);
    return windows->currentPage();
}

static QString statusText(const HeadUnit &unit)
{
    static const char *const links[] = {"module in this process", "no module", "module connected"};
    return QStringLiteral("%1, %2").arg(
        pageText(unit.windows()->currentWindow()),
        QLatin1String(links[ServiceConnection::instance()->state()]));
}

static void reportTo(ServiceManager *manager, const HeadUnit *unit)
{
    const auto report = [manager, unit] { manager->setStatus(statusText(*unit)); };
    QObject::connect(unit->windows(), &WindowStack::windowOpened, manager, report);
    QObject::connect(ServiceConnection::instance(), &ServiceConnection::stateChanged, manager,
                     report);
    auto *firstPaint = new FirstPaint(unit->windows()->currentPage());
    QObject::connect(firstPaint, &FirstPaint::painted, manager, &ServiceManager::reportReady);
    report();
}

static void setLanguage(UnitLanguage *language, const Configuration &configuration)
{
    if (configuration.language.isEmpty())
        language->restore();
    else
        Translator::instance()->setLanguage(configuration.language);
}

static int run(const Configuration &configuration)
{
    ServiceConnection::instance()->setAddress(configuration.module);
    HeadUnit unit;
    setLanguage(unit.language(), configuration);
    SoundOutput sound(unit.audio());
    QString error;
    if (!unit.load(configuration.plugin, &error))
        return fail(error);
    FullScreen display(&unit);
    display.showFullScreen();
    std::optional<LastPage> lastPage;
    int page = configuration.page;
    if (configuration.restoresPage)
        page = lastPage.emplace(unit.windows()).pageToOpen(page);
    if (!open(unit.windows(), page))
        return fail(QStringLiteral("%1: expected a plugin with the page %2, found none")
                        .arg(configuration.plugin, pageText(page)));
    const ReverseCamera reverseCamera(&unit);
    ServiceManager manager;
    reportTo(&manager, &unit);
    const EndRequest endRequest;
    QObject::connect(&endRequest, &EndRequest::requested, &manager,
                     &ServiceManager::reportStopping);
    QObject::connect(&endRequest, &EndRequest::requested, qApp, &QCoreApplication::quit);
    QApplication::exec();
    if (lastPage)
        lastPage->settle();
    return Done;
}

int main(int argc, char *argv[])
{
    ensureStandardStreams();
    ensureRuntimeFolder();
    QCoreApplication::setApplicationName(QStringLiteral("norda-unit"));
    Arguments arguments(argc, argv);
    Configuration configuration;
    QString error;
    if (!readConfiguration(arguments, argv, &configuration, &error))
        return fail(error);
    if (!configuration.text.isEmpty()) {
        std::printf("%s", qPrintable(configuration.text));
        return Done;
    }
    prepareEnvironment(configuration);
    const QtMessageHandler usual = qInstallMessageHandler(endOnFatal);
    QApplication application(arguments.qtCount, arguments.qt.data());
    qInstallMessageHandler(usual);
    error = faultOfStart(arguments);
    if (!error.isEmpty())
        return fail(error);
    endsignals::install();
    const ExitGuard guard;
    night::apply(&application, configuration.style);
    if (!configuration.showsCursor)
        QApplication::setOverrideCursor(Qt::BlankCursor);
    return run(configuration);
}
