#include "pages.h"
#include "program.h"
#include "testfolder.h"
#include "testmain.h"
#include "testpaths.h"

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

/** What the bench does not accept: one line names it and what was expected, and nothing starts. */
class tst_BenchRefusals : public QObject
{
    Q_OBJECT
private slots:
    void badArguments_data();
    void badArguments();
    void unusableSources_data();
    void unusableSources();
    void unusableCars_data();
    void unusableCars();
    void portWithoutRights();
    void damagedLogOfTwoHundredMegabytes();
    void dbcOfTwoHundredMegabytes();

private:
    TestFolder m_folder;
};

static ProgramResult run(const QStringList &arguments)
{
    return runProgram(QStringList(testpaths::benchFile()) + arguments);
}

void tst_BenchRefusals::badArguments_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    QTest::newRow("speed") << QStringList{"--speed", "fast"}
                           << "--speed: expected a number from 0.1 to 100 or 'max', got 'fast'";
    QTest::newRow("negative speed") << QStringList{"--speed=-1"}
                                    << "--speed: expected a number from 0.1 to 100 or 'max', got "
                                       "'-1'";
    QTest::newRow("duration") << QStringList{"--duration", "soon"}
                              << "--duration: expected a number from 0.1 to 10000000, got 'soon'";
    QTest::newRow("window") << QStringList{"--window", QString::number(lastPage + 1)}
                            << QStringLiteral(
                                   "--window: expected a whole number from %1 to %2, got '%3'")
                                   .arg(firstPage)
                                   .arg(lastPage)
                                   .arg(lastPage + 1);
    QTest::newRow("scale") << QStringList{"--scale", "0"}
                           << "--scale: expected a number from 0.25 to 4, got '0'";
    QTest::newRow("trim") << QStringList{"--trim", "sports"}
                          << "--trim: expected 'full', 'no-rear' or 'manual', got 'sports'";
    QTest::newRow("language") << QStringList{"--language", "xx"}
                              << "--language: expected 'en', 'de', 'fr' or 'es', got 'xx'";
    QTest::newRow("language with a country")
        << QStringList{"--language", "de_DE"}
        << "--language: expected 'en', 'de', 'fr' or 'es', got 'de_DE'";
    QTest::newRow("fault") << QStringList{"--fault", "silence:2"}
                           << "--fault: expected silence with a number from 0 to 1, got "
                              "'2'";
    QTest::newRow("seed") << QStringList{"--seed", "-1"}
                          << "--seed: expected a whole number from 0 to 4294967295, got '-1'";
    QTest::newRow("seed with a fraction")
        << QStringList{"--seed", "1.5"}
        << "--seed: expected a whole number from 0 to 4294967295, got '1.5'";
    QTest::newRow("window with a fraction")
        << QStringList{"--window", "80.9"}
        << QStringLiteral("--window: expected a whole number from %1 to %2, got '80.9'")
               .arg(firstPage)
               .arg(lastPage);
    for (const char *option :
         {"source",  "speed",    "duration", "window", "gallery",  "record",  "record-limit",
          "summary", "script",   "junit",    "check",  "diff",     "cut",     "from",
          "to",      "trim",     "fault",    "seed",   "platform", "style",   "theme",
          "scale",   "language", "plugin",   "ask",    "requests", "log-can", "report"})
        QTest::addRow("--%s ''", option)
            << QStringList{QStringLiteral("--%1=").arg(option)} << ", got ''";
    for (const char *option : {"--ask=never", "--requests=5", "--log-can=seen.log"})
        QTest::addRow("%s with the simulated car", option)
            << QStringList{option}
            << QStringLiteral("%1: expected with a car that is connected, got 'simulator'")
                   .arg(QString(option).section(QLatin1Char('='), 0, 0));
    const QString car = QStringLiteral("elm327:/dev/ttyNOSUCH0");
    QTest::newRow("ask") << QStringList{car, "--ask", "often"}
                         << "--ask: expected 'never', 'auto' or 'always', got 'often'";
    QTest::newRow("requests") << QStringList{car, "--requests", "51"}
                              << "--requests: expected a whole number from 1 to 50, got '51'";
    QTest::newRow("log that cannot be written")
        << QStringList{car, "--log-can", "/"}
        << "--log-can: expected a file that can be written, got '/'";
    QTest::newRow("log in place of the recording")
        << QStringList{car, "--headless", "--log-can", "x.log", "--record", "x.log"}
        << "--log-can: expected another file than --record, got 'x.log'";
    QTest::newRow("car that is not there")
        << QStringList{"--headless", car}
        << "elm327:/dev/ttyNOSUCH0: expected a serial port, found nothing";
    QTest::newRow("car of an unknown kind")
        << QStringList{"--headless", "can:can0"}
        << "can:can0: expected can:PLUGIN:INTERFACE[?bitrate=N], elm327:DEVICE[@BAUD] or "
           "elm327:tcp:HOST:PORT";
    QTest::newRow("DBC file with an adapter")
        << QStringList{"--headless", car, "--dbc", "car.dbc", "--map", "car.json"}
        << "elm327:/dev/ttyNOSUCH0: expected a CAN bus with --dbc and --map";
    QTest::newRow("unknown option")
        << QStringList{"--nothing"} << "Unknown option 'nothing'. See --help.";
    QTest::newRow("missing value")
        << QStringList{"--source"} << "Missing value after '--source'. See --help.";
    QTest::newRow("file that is not there")
        << QStringList{"drive.csv"}
        << "drive.csv: expected a readable file: No such file or directory";
    QTest::newRow("two drives") << QStringList{"one.csv", "two.csv"}
                                << "two.csv: expected one drive, got another before it";
    QTest::newRow("a drive beside --source")
        << QStringList{"--source", "none", "two.csv"}
        << "two.csv: expected one drive, got another before it";
    QTest::newRow("summary") << QStringList{"--summary", "/proc/nothing/s.json"}
                             << "--summary: expected a file that can be written, got "
                                "'/proc/nothing/s.json'";
    QTest::newRow("record") << QStringList{"--record", "/"}
                            << "--record: expected a file that can be written, got '/'";
    QTest::newRow("gallery") << QStringList{"--gallery", "/proc/nothing"}
                             << "--gallery: expected a folder that can be made, got "
                                "'/proc/nothing'";
    QTest::newRow("report") << QStringList{"--report", "/proc/nothing"}
                            << "--report: expected a folder that can be made, got "
                               "'/proc/nothing'";
    QTest::newRow("part without a cut")
        << QStringList{"--from", "5"} << "--from: expected with --cut, got it alone";
    QTest::newRow("end without a cut")
        << QStringList{"--to", "5"} << "--to: expected with --cut, got it alone";
    QTest::newRow("report without scenarios")
        << QStringList{"--junit", "r.xml"} << "--junit: expected with --script, got it alone";
    QTest::newRow("limit without a recording") << QStringList{"--record-limit", "5"}
                                               << "--record-limit: expected with --record, got it "
                                                  "alone";
    QTest::newRow("map without a DBC file")
        << QStringList{"--map", "car.json"} << "--map: expected with --dbc, got it alone";
    QTest::newRow("DBC file without a map") << QStringList{"--headless", "--dbc", "car.dbc"}
                                            << "--dbc: expected with --map, got it alone";
    QTest::newRow("nothing to check")
        << QStringList{"--check-map"} << "--check-map: expected with --map, got it alone";
    QTest::newRow("nothing to suggest for")
        << QStringList{"--suggest-map"} << "--suggest-map: expected with --dbc, got it alone";
    QTest::newRow("DBC file that is not there")
        << QStringList{"--suggest-map", "--dbc", "/nothing.dbc"}
        << "/nothing.dbc: expected a readable file: No such file or directory";
    QTest::newRow("simulated car with a DBC file")
        << QStringList{"--headless", "--dbc", "car.dbc", "--map", "car.json"}
        << "--source: expected a candump log with --dbc and --map, got 'simulator'";
    QTest::newRow("theme") << QStringList{"--theme", "blue"}
                           << "--theme: expected 'auto', 'light' or 'dark', got 'blue'";
    QTest::newRow("style") << QStringList{"-style", "glass"}
                           << "--style: expected one of Windows, Fusion, got 'glass'";
    QTest::newRow("unknown, with one dash")
        << QStringList{"-geometry", "1x1"} << "Unknown option 'geometry'. See --help.";
    QTest::newRow("plugin is a folder") << QStringList{"--headless", "--plugin", "/etc"}
                                        << "/etc: expected a plugin, found a directory";
    QTest::newRow("plugin") << QStringList{"--headless", "--plugin", "/nothing.so"}
                            << "/nothing.so: expected a plugin, found no such file";
    QTest::newRow("not a plugin") << QStringList{"--headless", "--plugin", "/etc/passwd"}
                                  << "/etc/passwd: expected a plugin with the interface "
                                     "com.stavel.Qt.nordaPlugin, found no plugin";
}

void tst_BenchRefusals::badArguments()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    const ProgramResult result = run(arguments);
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.err.split(QLatin1Char('\n')).filter(message).size(), 1);
    QVERIFY2(result.err.endsWith(message + QLatin1Char('\n')), qPrintable(result.err));
    QCOMPARE(result.out, QString());
}

void tst_BenchRefusals::unusableSources_data()
{
    QTest::addColumn<QByteArray>("content"); // null for the folder itself
    QTest::addColumn<QString>("message");
    QTest::newRow("directory") << QByteArray() << ": expected a file, found a directory";
    QTest::newRow("empty") << QByteArray("")
                           << ": line 1: expected an OBD-II header row (such as 'Engine RPM'), a "
                              "candump log or a recording, found an empty file";
    QTest::newRow("noise") << QByteArray("\x7f"
                                         "ELF\x02\x01\x00\xff\xff",
                                         9)
                           << ": line 1: expected an OBD-II header row (such as 'Engine RPM'), a "
                              "candump log or a recording, found '?ELF????"
                              "?'";
}

void tst_BenchRefusals::unusableSources()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    const QString source = content.isNull() ? m_folder.path() : m_folder.write("bad.log", content);
    const ProgramResult result = run({"--headless", "--source", source});
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.err.endsWith(source + message + QLatin1Char('\n')), qPrintable(result.err));
}

/** A car that is explained badly: one line names the file, and the line or path. */
void tst_BenchRefusals::unusableCars_data()
{
    QTest::addColumn<QByteArray>("dbc"); // null for a folder
    QTest::addColumn<QByteArray>("map");
    QTest::addColumn<QString>("message");
    const QByteArray log = "BO_ 256 A: 8 X\n SG_ M M : 0|8@1+ (1,0) [0|255] \"\" X\n";
    const QByteArray good = log + " SG_ S : 8|8@1+ (1,0) [0|255] \"\" X\n";
    const QByteArray map = R"({"Vehicle.Speed":{"dbc2vss":{"signal":"S"}}})";
    const auto dbc = [&map](const char *name, const QByteArray &content, const char *message) {
        QTest::newRow(name) << content << map << QStringLiteral("car.dbc: ") + message;
    };
    const auto formula = [&good](const char *name, const QByteArray &math, const char *message) {
        QTest::newRow(name)
            << good
            << QByteArray(R"({"Vehicle.Speed":{"dbc2vss":{"signal":"S","transform":{"math":")") +
                   math + R"("}}}})"
            << QStringLiteral("car.json: Vehicle.Speed: dbc2vss: expected a formula in x as "
                              "'math': ") +
                   message;
    };
    dbc("bits of its multiplexor", log + " SG_ S m1 : 4|8@1+ (1,0) [0|255] \"\" X\n",
        "line 3: expected bits of its own for S, found it to share some with its multiplexor M");
    dbc("two multiplexors",
        log + " SG_ N M : 8|8@1+ (1,0) [0|255] \"\" X\n"
              " SG_ S m1 : 16|8@1+ (1,0) [0|255] \"\" X\n",
        "line 4: expected one multiplexor (M) in A for S, found several");
    dbc("multiplexors in a circle",
        "BO_ 256 A: 8 X\n SG_ M m0M : 0|8@1+ (1,0) [0|255] \"\" X\n"
        " SG_ S m1M : 8|8@1+ (1,0) [0|255] \"\" X\n"
        "SG_MUL_VAL_ 256 M S 0-0;\nSG_MUL_VAL_ 256 S M 1-1;\n",
        "line 2: expected at most 16 multiplexors above M, found more or a circle");
    dbc("directory", QByteArray(), "expected a file, found a directory");
    dbc("empty", "", "line 1: expected at least one message (BO_), found the end of the file");
    dbc("binary",
        QByteArray("\x7f"
                   "ELF",
                   4),
        "line 1: expected a statement such as BO_, SG_ or VAL_, found '?ELF'");
    formula("a formula that needs itself", "Vehicle.Speed + 1",
            "column 1: expected a number, x, '(', floor, ceil, round or abs, found "
            "'Vehicle.Speed + 1'");
    formula("an open parenthesis", "x + (2", "column 7: expected ')', found the end");
    QTest::newRow("a signal in no message")
        << good << QByteArray(map).replace("\"S\"", "\"T\"")
        << "car.json: Vehicle.Speed: expected a signal of the DBC file, found 'T', which no "
           "message has";
    QTest::newRow("a map of another format")
        << good << QByteArray(R"({"signals":[{"name":"S"}]})")
        << "car.json: expected paths with 'dbc2vss', as a tree or by path, found none";
    QTest::newRow("a map that is cut")
        << good << map.left(20) << "car.json: line 1: expected JSON: unterminated string";
}

void tst_BenchRefusals::unusableCars()
{
    QFETCH(QByteArray, dbc);
    QFETCH(QByteArray, map);
    QFETCH(QString, message);
    const TestFolder folder;
    const QString log = folder.write("raw.log", "(1.0) can0 100#0102030405060708\n");
    const QString dbcFile =
        dbc.isNull() ? folder.filePath("car.dbc") : folder.write("car.dbc", dbc);
    QVERIFY(!dbc.isNull() || QDir().mkdir(dbcFile));
    const QString mapFile = folder.write("car.json", map);
    const ProgramResult result =
        run({"--headless", "--source", log, "--dbc", dbcFile, "--map", mapFile});
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.err, folder.path() + QLatin1Char('/') + message + QLatin1Char('\n'));
    QCOMPARE(result.out, QString());
}

/** As root has every right, it starts the bench as somebody else. */
void tst_BenchRefusals::portWithoutRights()
{
    const int port = ::posix_openpt(O_RDWR | O_NOCTTY);
    QVERIFY(port >= 0 && ::grantpt(port) == 0 && ::unlockpt(port) == 0);
    const QString name = QString::fromLatin1(::ptsname(port));
    QVERIFY(QFile::setPermissions(name, {}));
    QStringList command = {testpaths::benchFile(), "--headless", "elm327:" + name};
    if (::getuid() == 0)
        command = QStringList{"setpriv",        "--reuid=65534", "--regid=65534",
                              "--clear-groups", "env",           "HOME=" + m_folder.path()} +
                  command;
    const ProgramResult result = runProgram(command);
    ::close(port);
    if (result.exitCode == 126)
        QSKIP("the build folder is not readable for others");
    QCOMPARE(result.exitCode, 2);
    const QString message = "elm327:" + name + ": no permission to use it; its group '";
    QVERIFY2(result.err.contains(message), qPrintable(result.err));
}

/** 200 MB of one line, and the bench with too little memory to keep it. */
static ProgramResult runWithHugeFile(const QString &huge, const QString &arguments)
{
    QFile file(huge);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write %s", qPrintable(huge));
    const QByteArray block(1024 * 1024, 'x');
    for (int megabyte = 0; megabyte < 200; ++megabyte)
        file.write(block);
    file.close();
    const ProgramResult result =
        runProgram({"/bin/sh", "-c",
                    "case $2 in *asan*|*armhf*) ;; *) ulimit -v 1500000;; esac; "
                    "exec \"$2\" " +
                        arguments,
                    "sh", huge, testpaths::benchFile()});
    QFile::remove(huge);
    return result;
}

void tst_BenchRefusals::damagedLogOfTwoHundredMegabytes()
{
    const ProgramResult result =
        runWithHugeFile(m_folder.filePath("huge.log"), "--headless --source \"$1\"");
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.err.endsWith(QStringLiteral("found a line longer than 65536 bytes\n")),
             qPrintable(result.err));
}

void tst_BenchRefusals::dbcOfTwoHundredMegabytes()
{
    const QString huge = m_folder.filePath("huge.dbc");
    const ProgramResult result = runWithHugeFile(huge, "--suggest-map --dbc \"$1\"");
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.err, huge + QStringLiteral(": expected at most 64 MB\n"));
}

NORDA_TEST_MAIN(tst_BenchRefusals)
#include "tst_benchrefusals.moc"
