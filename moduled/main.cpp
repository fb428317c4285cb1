#include "drive.h"
#include "service/moduleservice.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

enum ExitCode { Done = 0, Unusable = 2 };

static int fail(const QString &error)
{
    std::fprintf(stderr, "norda-moduled: %s\n", qPrintable(error));
    return Unusable;
}

int main(int argc, char *argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("norda-moduled"));
    QCoreApplication::setApplicationVersion(QStringLiteral(NORDA_VERSION));
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({{"bus", "Where to serve: \"session\", \"system\" or the address of a bus.",
                        "BUS", "system"},
                       {"source", "What the car does.", "SOURCE", "simulator"}});
    parser.process(application);

    QString error;
    auto source = module::openSource(parser.value(QStringLiteral("source")), &error);
    if (!source)
        return fail(error);
    module::ModuleService service;
    if (!service.open(parser.value(QStringLiteral("bus")), &error))
        return fail(error);
    module::Drive drive(std::move(source));
    drive.play();
    return QCoreApplication::exec();
}
