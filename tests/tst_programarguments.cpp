#include "manualpage.h"
#include "program.h"
#include "startedprogram.h"
#include "testmain.h"

#include <QTcpServer>

/** What the services are started with: they tell of their options, and refuse what they cannot use.
 */
class tst_ProgramArguments : public QObject
{
    Q_OBJECT
private slots:
    void usage_data();
    void usage();
    void manualNamesEveryOption_data();
    void manualNamesEveryOption();
    void unusable_data();
    void unusable();
    void portInUse();
};

static const QString ecu = QStringLiteral("norda-ecu");
static const QString moduled = QStringLiteral("norda-moduled");

static ProgramResult run(const QString &program, const QString &options)
{
    return runProgram({"sh", "-c", "exec " + StartedProgram::command(program) + ' ' + options}, 60);
}

void tst_ProgramArguments::usage_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("text");
    const auto row = [](const QString &program, const char *option, const char *text) {
        QTest::addRow("%s %s: %s", qPrintable(program), option, text) << program << option << text;
    };
    row(ecu, "--help", "--say <TEXT[:SHARE]>");
    row(ecu, "-h", "Exit codes: 0 done");
    row(ecu, "--version", "norda-ecu 0.");
    row(moduled, "--help", "--source <simulator|none|FILE|CAR>");
    row(moduled, "--help", "a recorded drive begins");
    row(moduled, "-h", "Exit codes: 0 done");
    row(moduled, "--version", "norda-moduled 0.");
}

void tst_ProgramArguments::usage()
{
    QFETCH(QString, program);
    QFETCH(QString, option);
    QFETCH(QString, text);
    const ProgramResult result = run(program, option);
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(result.out.contains(text), qPrintable(result.out));
    QCOMPARE(result.err, QString());
}

void tst_ProgramArguments::manualNamesEveryOption_data()
{
    QTest::addColumn<QString>("program");
    for (const QString &program : {ecu, moduled})
        QTest::newRow(qPrintable(program)) << program;
}

void tst_ProgramArguments::manualNamesEveryOption()
{
    QFETCH(QString, program);
    const QStringList options = optionsOf(run(program, "--help").out);
    QVERIFY(options.size() > 13);
    QCOMPARE(missingInManual(program, options), QStringList());
}

static void addEcuRows()
{
    const auto row = [](const char *options, const char *message) {
        QTest::addRow("norda-ecu %s", options)
            << ecu << QString::fromLatin1(options) << QString::fromLatin1(message);
    };
    row("", "expected --can, --pty or --tcp, see --help");
    row("--source simulator", "expected --can, --pty or --tcp, see --help");
    row("--tcp 65536", "--tcp: expected a whole number from 0 to 65535, got '65536'");
    row("--tcp 1.5", "--tcp: expected a whole number from 0 to 65535, got '1.5'");
    row("--tcp=", "--tcp: expected PORT, got ''");
    row("--tcp 0 --speed 0", "--speed: expected a number from 0.1 to 100, got '0'");
    row("--tcp 0 --speed fast", "--speed: expected a number from 0.1 to 100, got 'fast'");
    row("--tcp 0 --duration -1", "--duration: expected a number from 0 to 100000, got '-1'");
    row("--tcp 0 --bits 12", "--bits: expected 11 or 29, got '12'");
    row("--tcp 0 --units 9", "--units: expected a whole number from 1 to 8, got '9'");
    row("--tcp 0 --codes P0304,X1",
        "--codes: expected at most 127 trouble codes, such as P0304,U0100, got 'P0304,X1'");
    row("--tcp 0 --without 0C,XY",
        "--without: expected parameters from 01 to FF, such as 0C,0D, got '0C,XY'");
    row("--tcp 0 --without 00",
        "--without: expected parameters from 01 to FF, such as 0C,0D, got '00'");
    row("--tcp 0 --delay 10001", "--delay: expected a whole number from 0 to 10000, got '10001'");
    row("--tcp 0 --lose 1.1", "--lose: expected a number from 0 to 1, got '1.1'");
    row("--tcp 0 --say HELLO", "--say: expected one of 'NO DATA', ");
    row("--tcp 0 --say echo:2", "--say: expected a share from 0 to 1 after 'echo:', got 'echo:2'");
    row("--tcp 0 --tester 0", "--tester: expected a whole number from 1 to 60000, got '0'");
    row("--tcp 0 --silence 5",
        "--silence: expected the second it begins and its length, such as 20:10, got '5'");
    row("--tcp 0 --pull 5:0",
        "--pull: expected the second it begins and its length, such as 20:10, got '5:0'");
    row("--tcp 0 --seed -1", "--seed: expected a whole number from 0 to 4294967295, got '-1'");
    row("--can virtualcan:can0 --dbc car.dbc", "--dbc: expected with --map, got one of them alone");
    row("--tcp 0 --dbc car.dbc --map car.json",
        "--dbc: expected with --can or a candump log, got neither");
    row("--can virtualcan:can0 --dbc gone.dbc --map gone.json", "gone.dbc: expected a ");
    row("--tcp 0 --source gone.csv", "gone.csv: expected a readable file");
    row("--tcp 0 car.csv", "car.csv: expected an option, see --help");
    row("--tcp 0 --loud", "Unknown option 'loud'. See --help.");
    row("--pty /nowhere/obd",
        "--pty: expected a name for a link that can be made, got '/nowhere/obd'");
    row("--pty /dev", "--pty: expected a name for a link that can be made, got '/dev'");
    row("--can virtualcan", "--can: expected PLUGIN:INTERFACE[?bitrate=N] with a plugin of ");
    row("--can nothing:can0", "--can: expected PLUGIN:INTERFACE[?bitrate=N] with a plugin of ");
    row("--can virtualcan:can0?bitrate=0",
        "--can: expected PLUGIN:INTERFACE[?bitrate=N] with a plugin of ");
    row("--can socketcan:nocan0", "--can: socketcan:nocan0: ");
}

static void addModuledRows()
{
    const auto row = [](const char *options, const char *message) {
        QTest::addRow("norda-moduled %s", options)
            << moduled << QString::fromLatin1(options) << QString::fromLatin1(message);
    };
    row("--loud", "Unknown option 'loud'. See --help.");
    row("drive.csv", "drive.csv: expected an option, see --help");
    row("--session --system", "--system: expected one bus, got --session as well");
    row("--session --bus unix:path=/x", "--bus: expected one bus, got --session as well");
    row("--bus=", "--bus: expected ADDRESS, got ''");
    row("--bus unix:path=/nowhere", "unix:path=/nowhere: expected a D-Bus, got '");
    row("--bus nonsense", "nonsense: expected a D-Bus, got '");
    row("--source=", "--source: expected simulator|none|FILE|CAR, got ''");
    row("--source gone.csv", "gone.csv: expected a readable file");
    row("--source elm327:", "elm327:: expected can:PLUGIN:INTERFACE[?bitrate=N], elm327:DEVICE");
    row("--trim fast", "--trim: expected 'full', 'no-rear' or 'manual', got 'fast'");
    row("--speed 0", "--speed: expected a number from 0.1 to 100, got '0'");
    row("--ask maybe", "--ask: expected 'never', 'auto' or 'always', got 'maybe'");
    row("--ask never", "--ask: expected with a car that is connected, got 'simulator'");
    row("--requests 51", "--requests: expected a whole number from 1 to 50, got '51'");
    row("--requests 5", "--requests: expected with a car that is connected, got 'simulator'");
    row("--source none --log-can x",
        "--log-can: expected with a car that is connected, got 'none'");
    row("--source elm327:/dev/null --log-can /nowhere/log",
        "--log-can: expected a file that can be written, got '/nowhere/log'");
    row("--dbc car.dbc", "--dbc: expected with a candump log or a CAN bus, got 'simulator'");
    row("--source can:socketcan:can0 --dbc car.dbc", "--dbc: expected with --map, got it alone");
    row("--fault mischief", "--fault: expected ");
    row("--fault silence:2", "--fault: expected ");
    row("--seed -1", "--seed: expected a whole number from 0 to 4294967295, got '-1'");
}

void tst_ProgramArguments::unusable_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("message");
    addEcuRows();
    addModuledRows();
}

void tst_ProgramArguments::unusable()
{
    QFETCH(QString, program);
    QFETCH(QString, options);
    QFETCH(QString, message);
    const ProgramResult result = run(program, options);
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.err.startsWith(program + ": " + message), qPrintable(result.err));
    QCOMPARE(result.err.count('\n'), 1);
    QCOMPARE(result.err.count(", got '"), int(result.err.contains(", got '")));
    QCOMPARE(result.out, QString());
}

void tst_ProgramArguments::portInUse()
{
    QTcpServer other;
    QVERIFY(other.listen(QHostAddress::LocalHost));
    const ProgramResult result = run(ecu, QStringLiteral("--tcp %1").arg(other.serverPort()));
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.err.startsWith(QStringLiteral("norda-ecu: --tcp: expected a port that is free, "
                                                  "got %1: ")
                                       .arg(other.serverPort())),
             qPrintable(result.err));
    QCOMPARE(result.err.count('\n'), 1);
}

NORDA_TEST_MAIN(tst_ProgramArguments)
#include "tst_programarguments.moc"
