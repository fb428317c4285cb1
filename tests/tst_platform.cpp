#include "program.h"
#include "testmain.h"
#include "testpaths.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

/** What the bench draws on, and who can reach it. */
class tst_Platform : public QObject
{
    Q_OBJECT
private slots:
    void listens_data();
    void listens();
    void refuses_data();
    void refuses();
    void takenPort();
    void noDisplay();

private:
    static int port() { return 20000 + int(QCoreApplication::applicationPid() % 20000); }
    /** The test's own platform is taken away; "PORT" becomes the port of this process. */
    static QStringList bench(const QStringList &environment, const QStringList &arguments)
    {
        QStringList command{"env",     "-u", "QT_QPA_PLATFORM", "-u",
                            "DISPLAY", "-u", "WAYLAND_DISPLAY"};
        command += environment;
        command.append(testpaths::benchFile());
        command += arguments;
        return command.replaceInStrings("PORT", QString::number(port()));
    }
};

/** The lines of /proc/net/tcp and tcp6 for listening sockets of a port, while a command runs. */
static QStringList socketsOf(const QStringList &command, int port, int tenths)
{
    const QString script =
        QStringLiteral("\"$@\" >/dev/null 2>&1 & bench=$!; for i in $(seq %2); do "
                       "grep -h ':%1 .* 0A ' /proc/net/tcp /proc/net/tcp6 && break; sleep 0.1; "
                       "done; kill $bench; wait")
            .arg(QString::number(port, 16).toUpper(), QString::number(tenths));
    const ProgramResult result = runProgram(QStringList{"sh", "-c", script, "sh"} + command);
    return result.out.split(QLatin1Char('\n')).filter(QStringLiteral(":"));
}

void tst_Platform::listens_data()
{
    QTest::addColumn<QStringList>("environment");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("isListening");
    const QStringList none;
    QTest::newRow("named") << none << QStringList{"--platform", "vnc:port=PORT"} << true;
    QTest::newRow("one dash") << none << QStringList{"-platform", "vnc:port=PORT"} << true;
    QTest::newRow("upper case") << none << QStringList{"--platform", "VNC:port=PORT"} << true;
    QTest::newRow("environment") << QStringList{"QT_QPA_PLATFORM=Vnc:port=PORT"} << none << true;
    QTest::newRow("second of a list")
        << none << QStringList{"--platform", "bogus;vnc:port=PORT"} << true;
    QTest::newRow("headless") << none
                              << QStringList{"--headless", "--speed", "1", "--platform",
                                             "vnc:port=PORT"}
                              << false;
    QTest::newRow("headless, environment") << QStringList{"QT_QPA_PLATFORM=vnc:port=PORT"}
                                           << QStringList{"--headless", "--speed", "1"} << false;
    QTest::newRow("scenario") << none
                              << QStringList{"--platform", "vnc:port=PORT", "--script", "SCENARIO"}
                              << false;
}

// Of all that Qt's platforms offer, nothing is reached from outside this machine.
void tst_Platform::listens()
{
    QFETCH(QStringList, environment);
    QFETCH(QStringList, arguments);
    QFETCH(bool, isListening);
    QTemporaryDir folder;
    QFile scenario(folder.filePath("waits.scenario"));
    QVERIFY(scenario.open(QIODevice::WriteOnly));
    scenario.write("scenario \"Waits\"\nsource none\n0 wait 5\nexpect page 80\n");
    scenario.close();
    arguments.replaceInStrings("SCENARIO", scenario.fileName());
    const QStringList sockets =
        socketsOf(bench(environment, arguments), port(), isListening ? 300 : 30);
    QCOMPARE(!sockets.isEmpty(), isListening);
    for (const QString &socket : sockets) // the addresses are words of the machine's byte order
        QVERIFY2(socket.contains(" 0100007F:") || socket.contains("FFFF00000100007F:"),
                 qPrintable(socket));
}

void tst_Platform::refuses_data()
{
    QTest::addColumn<QStringList>("environment");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    const QStringList none;
    const QString unusable =
        QStringLiteral("--platform: expected a Qt platform that works here, got '%1'\n");
    const QString port =
        QStringLiteral("--platform: expected port= with a number from 1 to 65535, got '%1'\n");
    // clang-format off
    QTest::newRow("unknown") << none << QStringList{"--platform", "bogus"} << unusable.arg("bogus");
    QTest::newRow("unknown, environment") << QStringList{"QT_QPA_PLATFORM=bogus"} << none
        << unusable.arg("bogus");
    QTest::newRow("a list of unknown ones") << none << QStringList{"--platform", "bogus;none"}
        << unusable.arg("bogus;none");
    QTest::newRow("X without a display") << none << QStringList{"--platform", "xcb"}
        << unusable.arg("xcb");
    QTest::newRow("X with a display that is not there") << QStringList{"DISPLAY=:4077"} << none
        << "No display can be used here (DISPLAY is ':4077'); try --headless\n";
    QTest::newRow("port too large") << none << QStringList{"--platform", "vnc:port=99999"}
        << port.arg("port=99999");
    QTest::newRow("no port") << none << QStringList{"--platform", "vnc:port=0"} << port.arg("port=0");
    QTest::newRow("port is a word") << none << QStringList{"--platform", "VNC:port=http"}
        << port.arg("port=http");
    QTest::newRow("two ports") << none << QStringList{"--platform", "vnc:port=5901:xport=70000"}
        << port.arg("xport=70000");
    // clang-format on
}

void tst_Platform::refuses()
{
    QFETCH(QStringList, environment);
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    const ProgramResult result = runProgram(bench(environment, arguments), 60);
    QCOMPARE(result.err, message);
    QCOMPARE(result.out, QString());
    QCOMPARE(result.exitCode, 2);
}

// Nobody could reach that bench.
void tst_Platform::takenPort()
{
    const int server = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto *generic = reinterpret_cast<sockaddr *>(&address);
    QCOMPARE(::bind(server, generic, length), 0);
    QCOMPARE(::listen(server, 1), 0);
    QCOMPARE(::getsockname(server, generic, &length), 0);
    const int taken = ntohs(address.sin_port);
    const ProgramResult result =
        runProgram(bench({}, {"--platform", QStringLiteral("vnc:port=%1").arg(taken)}), 60);
    ::close(server);
    QCOMPARE(result.err, QStringLiteral("--platform: expected a port that can be listened on, %1 "
                                        "is in use or not allowed\n")
                             .arg(taken));
    QCOMPARE(result.exitCode, 2);
}

void tst_Platform::noDisplay()
{
    const ProgramResult result = runProgram(bench({"QT_QPA_PLATFORM="}, {"--duration", "0.1"}));
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(result.err.startsWith("No display here: running as with --headless.\n"),
             qPrintable(result.err));
    QVERIFY2(!result.err.contains("qt."), qPrintable(result.err));
}

NORDA_TEST_MAIN(tst_Platform)
#include "tst_platform.moc"
