#include "drive.h"
#include "endsignals.h"
#include "options.h"
#include "relay.h"
#include "service/moduleservice.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <chrono>
#include <cstdio>

using namespace std::chrono_literals;

enum ExitCode { Done = 0, Unusable = 2 };

static constexpr auto roundPause = 1s; // between the end of a recorded drive and its next round

static int fail(const QString &error)
{
    std::fprintf(stderr, "norda-moduled: %s\n", qPrintable(error));
    return Unusable;
}

static int print(const QString &text)
{
    std::printf("%s", qPrintable(text));
    return Done;
}

/** One line for each event, whether it goes to a terminal or to the journal. */
static void setUpLog()
{
    qSetMessagePattern(QStringLiteral("norda-moduled: %{message}"));
    QLoggingCategory::setFilterRules(
        QStringLiteral("norda.connection.info=true\nqt.canbus*=false"));
}

static void reportBus(const module::ModuleService *service, const QString &bus)
{
    QObject::connect(service, &module::ModuleService::lost, service, [bus](bool isLost) {
        qInfo("%s: %s", qPrintable(bus),
              isLost ? "the bus is gone; connecting again" : "connected");
    });
}

static void relaySignals(moduled::Relay *relay, const module::ModuleService *service,
                         const QString &bus)
{
    relay->open(bus);
    QObject::connect(service, &module::ModuleService::lost, relay, [relay, bus](bool isLost) {
        if (!isLost)
            relay->open(bus);
    });
}

/** A service does not end with the drive that it plays. */
static void playRounds(module::Drive *drive)
{
    QObject::connect(drive, &module::Drive::finished, drive, [drive] {
        QTimer::singleShot(roundPause, drive, [drive] {
            drive->seek(0);
            drive->play();
        });
    });
    drive->play();
}

static int serve(const moduled::Options &options)
{
    endsignals::install();
    QString error;
    auto source =
        module::openSource(options.source, &error, options.trim, options.car, options.live);
    if (!source)
        return fail(error);
    module::ModuleService service;
    if (!service.open(options.bus, &error))
        return fail(error);
    reportBus(&service, options.bus);
    moduled::Relay relay;
    if (options.relays)
        relaySignals(&relay, &service, options.bus);
    module::Drive drive(std::move(source));
    drive.setSpeed(options.speed);
    drive.faults() = options.faults;
    playRounds(&drive);
    const EndRequest endRequest;
    QObject::connect(&endRequest, &EndRequest::requested, &drive, &QCoreApplication::quit);
    std::printf("serving %s\n", qPrintable(options.bus));
    std::fflush(stdout);
    return QCoreApplication::exec();
}

int main(int argc, char *argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("norda-moduled"));
    QCoreApplication application(argc, argv);
    setUpLog();
    moduled::Options options;
    QString error;
    if (!options.parse(QCoreApplication::arguments(), &error))
        return fail(error);
    if (!options.text.isEmpty())
        return print(options.text);
    if (options.printsInterface)
        return print(module::ModuleService::introspectionXml());
    return serve(options);
}
