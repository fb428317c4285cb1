#include "endsignals.h"
#include "server.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <cstdio>

enum ExitCode { Done = 0, Unusable = 2 };

static int fail(const QString &error)
{
    std::fprintf(stderr, "norda-ecu: %s\n", qPrintable(error));
    return Unusable;
}

static void endAfter(qint64 driveMs, double speed)
{
    if (driveMs > 0)
        QTimer::singleShot(std::chrono::milliseconds(qint64(double(driveMs) / speed)),
                           QCoreApplication::instance(), &QCoreApplication::quit);
}

int main(int argc, char *argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("norda-ecu"));
    QCoreApplication application(argc, argv);
    ecu::Options options;
    QString error;
    if (!options.parse(QCoreApplication::arguments(), &error))
        return fail(error);
    if (!options.text.isEmpty()) {
        std::printf("%s", qPrintable(options.text));
        return Done;
    }
    QLoggingCategory::setFilterRules(QStringLiteral("qt.canbus*=false"));
    endsignals::install();
    const EndRequest endRequest;
    QObject::connect(&endRequest, &EndRequest::requested, &application, &QCoreApplication::quit);
    ecu::Server server(options);
    QObject::connect(&server, &ecu::Server::serving, &application, [](const QString &place) {
        std::printf("%s\n", qPrintable(place));
        std::fflush(stdout);
    });
    QObject::connect(&server, &ecu::Server::failed, &application,
                     [](const QString &reason) { QCoreApplication::exit(fail(reason)); });
    if (!server.open(&error))
        return fail(error);
    endAfter(options.durationMs, options.speed);
    return QCoreApplication::exec();
}
