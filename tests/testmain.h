#pragma once

#include <QApplication>
#include <QTemporaryDir>
#include <QtTest>

/*
 * The main function of every test: offscreen, with a host root of its own, and strict: a warning
 * that a test neither announced with QTest::ignoreMessage() nor caught with a MessageCapture fails
 * it, since whatever warns in a test would warn in a car.
 */
template <typename TestClass>
int nordaTestMain(int argc, char *argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir scratch;
    qputenv("XDG_RUNTIME_DIR", scratch.path().toLocal8Bit());
    qputenv("NORDA_HOST_ROOT", scratch.filePath(QStringLiteral("root")).toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", scratch.filePath(QStringLiteral("config")).toLocal8Bit());
    QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("Arial")));

    // QtTest swallows what a test ignores and logs the rest, so the log tells what was unexpected.
    const QString log = scratch.filePath(QStringLiteral("log.txt"));
    QStringList arguments = QApplication::arguments();
    arguments << QStringLiteral("-o") << log + QStringLiteral(",txt") << QStringLiteral("-o")
              << QStringLiteral("-,txt");
    TestClass test;
    const int failures = QTest::qExec(&test, arguments);

    QFile file(log);
    int unexpected = 0;
    if (!file.open(QIODevice::ReadOnly))
        return 1;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (!line.startsWith("QWARN") && !line.startsWith("QCRITICAL"))
            continue;
        // The offscreen platform has no window manager to tell the smallest size to.
        if (line.endsWith("This plugin does not support propagateSizeHints()"))
            continue;
        ++unexpected;
        fprintf(stderr, "FAIL!  : unexpected: %s\n", line.constData());
    }
    return failures != 0 || unexpected != 0;
}

#define NORDA_TEST_MAIN(TestClass)                                                                 \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        return nordaTestMain<TestClass>(argc, argv);                                               \
    }
