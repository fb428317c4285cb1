#include "testmain.h"

#include <QFileInfo>
#include <QMap>
#include <QTemporaryDir>

#include <cstdio>
#include <memory>

static QMap<QString, TestMain> &tests()
{
    static QMap<QString, TestMain> registered;
    return registered;
}

bool registerTest(const char *file, TestMain run)
{
    tests().insert(QFileInfo(QString::fromLocal8Bit(file)).completeBaseName(), run);
    return true;
}

/** QtTest swallows what a test ignores and logs the rest, so the log tells what was unexpected. */
static int unexpectedWarnings(const QString &log)
{
    QFile file(log);
    if (!file.open(QIODevice::ReadOnly))
        return 1;
    int unexpected = 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (!line.startsWith("QWARN") && !line.startsWith("QCRITICAL"))
            continue;
        // The offscreen platform has no window manager to send sizes, raising and grabs to.
        if (line.contains("This plugin does not support "))
            continue;
        ++unexpected;
        std::fprintf(stderr, "FAIL!  : unexpected: %s\n", line.constData());
    }
    return unexpected;
}

int runTest(int argc, char *argv[], QObject *(*make)())
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir scratch;
    qputenv("XDG_RUNTIME_DIR", scratch.path().toLocal8Bit());
    qputenv("NORDA_HOST_ROOT", scratch.filePath(QStringLiteral("root")).toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", scratch.filePath(QStringLiteral("config")).toLocal8Bit());
    QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("Arial")));

    const QString log = scratch.filePath(QStringLiteral("log.txt"));
    QStringList arguments = QApplication::arguments();
    arguments << QStringLiteral("-o") << log + QStringLiteral(",txt") << QStringLiteral("-o")
              << QStringLiteral("-,txt");
    const std::unique_ptr<QObject> test(make());
    const int failures = QTest::qExec(test.get(), arguments);
    return failures != 0 || unexpectedWarnings(log) != 0;
}

int main(int argc, char *argv[])
{
    const QString name = QString::fromLocal8Bit(argc > 1 ? argv[1] : "");
    if (const TestMain run = tests().value(name)) {
        argv[1] = argv[0];
        return run(argc - 1, argv + 1);
    }
    std::fprintf(stderr, "expected one of these tests, got '%s':\n", qPrintable(name));
    for (const QString &known : tests().keys())
        std::fprintf(stderr, "  %s\n", qPrintable(known));
    return 2;
}
