#include "program.h"
#include "service/moduleinterface.h"
#include "testfolder.h"
#include "testmain.h"
#include "testpaths.h"

#include <QDirIterator>
#include <QJsonDocument>
#include <QJsonObject>

/** The vehicle module in a process of its own: nothing that crosses the adaptor differs. */
class tst_ModuleProcess : public QObject
{
    Q_OBJECT
private slots:
    void unusable_data();
    void unusable();
    void shippedScenariosPass();
    void drives_data();
    void drives();
    void touches_data();
    void touches();
    void emptyArray();
    void oneScenarioIsRecorded();
    void nothingIsLeft();

private:
    QString path(const char *name) const { return m_folder.filePath(name); }
    void compare(const QStringList &arguments);

    TestFolder m_folder;
};

static ProgramResult runBench(const QStringList &arguments)
{
    return runProgram(QStringList(testpaths::benchFile()) + arguments, 500);
}

static QByteArrayList linesOf(const QString &file)
{
    QFile recording(file);
    return recording.open(QIODevice::ReadOnly) ? recording.readAll().split('\n') : QByteArrayList();
}

/** Whether the module takes part in what a line holds: not in touches, beeps and queries. */
static bool isOfTheModule(const QByteArray &line)
{
    const QJsonObject object = QJsonDocument::fromJson(line).object();
    if (object.contains("action"))
        return false;
    if (!object.contains("call"))
        return true;
    const QString operation = object.value("call").toString();
    const bus::Interface::Member command =
        module::moduleInterface().command(operation.section("::", -1));
    return operation.startsWith("norda::") && command.isValid() &&
           command.resultSignature.isEmpty();
}

/** Without and with a process for the module: all lines are the same, in all three recordings. */
void tst_ModuleProcess::compare(const QStringList &arguments)
{
    QCOMPARE(runBench(arguments + QStringList{"--record", path("one.jsonl")}).exitCode, 0);
    const ProgramResult result =
        runBench(arguments + QStringList{"--module-process", "--record", path("two.jsonl")});
    QVERIFY2(result.exitCode == 0, qPrintable(result.out + result.err));
    const QByteArrayList inProcess = linesOf(path("one.jsonl"));
    const QByteArrayList unit = linesOf(path("two.jsonl"));
    const QByteArrayList module = linesOf(path("two.module.jsonl"));
    QVERIFY(inProcess.size() > 20);
    QCOMPARE(unit, inProcess);
    QByteArrayList shared;
    std::copy_if(unit.begin(), unit.end(), std::back_inserter(shared), isOfTheModule);
    QCOMPARE(module, shared);
}

void tst_ModuleProcess::unusable_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const QStringList &arguments, const char *message) {
        QTest::newRow(name) << arguments << message;
    };
    const char *const where =
        "--module-process: expected with --script or --headless, and without --serve\n";
    row("with --serve", {"--headless", "--serve"}, where);
    row("no such file", {"--headless", "--source", "nowhere.csv"},
        "nowhere.csv: expected a readable file: No such file or directory\n");
    row("a drive that happens now", {"--headless", "--source", "dbus:unix:path=/nowhere"},
        "dbus:unix:path=/nowhere: expected a D-Bus, got 'Failed to connect to socket /nowhere: No "
        "such file or directory'\n");
}

void tst_ModuleProcess::unusable()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    const ProgramResult result = runBench(arguments + QStringList{"--module-process"});
    QCOMPARE(result.err, message);
    QCOMPARE(result.exitCode, 2);
}

void tst_ModuleProcess::shippedScenariosPass()
{
    const QDir library(testpaths::source("bench/scenario/library"));
    const bool isEmulated = !testpaths::emulator().isEmpty(); // all of them take minutes then
    const QString played =
        isEmulated ? library.filePath("story-cold-start-to-parked.scenario") : library.path();
    const int scenarios = isEmulated ? 1 : library.entryList({"*.scenario"}).size();
    const ProgramResult result =
        runBench({"--script", played, "--module-process", "--gallery", path("pictures")});
    QVERIFY2(result.exitCode == 0, qPrintable(result.out + result.err));
    QVERIFY(result.out.contains(QStringLiteral("\n%1 passed, 0 failed\n").arg(scenarios)));
}

void tst_ModuleProcess::drives_data()
{
    QTest::addColumn<QStringList>("arguments");
    for (const char *trim : {"full", "no-rear", "manual"})
        QTest::newRow(trim) << QStringList{"--trim", trim};
    QTest::newRow("every fault") << QStringList{
        "--duration", "120",           "--seed",  "7",           "--fault", "late-start:5",
        "--fault",    "restart:60",    "--fault", "silence:0.1", "--fault", "flood:0.1",
        "--fault",    "duplicate:0.1", "--fault", "reorder:0.1", "--fault", "range:0.1",
        "--fault",    "truncate:0.1"};
}

void tst_ModuleProcess::drives()
{
    QFETCH(QStringList, arguments);
    if (!testpaths::emulator().isEmpty() && !arguments.contains("--duration"))
        arguments += {"--duration", "120"}; // the whole trip takes minutes then
    compare(QStringList{"--headless", "--speed", "max"} + arguments);
}

void tst_ModuleProcess::touches_data()
{
    QTest::addColumn<QString>("scenario");
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("gauges") << "gauges-touch-changes-a-gauge"
                            << QByteArray("norda::VtqAdaptor::gaugeTLMenu");
    QTest::newRow("climate") << "climate-fan-and-vents"
                             << QByteArray("norda::VtqAdaptor::NordatriggerRearDefrostButton");
    QTest::newRow("menu") << "settings-menu-walk"
                          << QByteArray("norda::VtqAdaptor::NordaSetSelectedLineNumber");
}

void tst_ModuleProcess::touches()
{
    QFETCH(QString, scenario);
    QFETCH(QByteArray, command);
    compare({"--script", testpaths::source("bench/scenario/library/" + scenario + ".scenario")});
    const QByteArray module = linesOf(path("two.module.jsonl")).join('\n');
    QVERIFY2(module.contains(command), module.constData());
    // What was recorded with its touches is played back to a module in its own process, too.
    QVERIFY(QFile::rename(path("two.jsonl"), path("touches.jsonl")));
    compare({"--headless", "--speed", "max", "--source", path("touches.jsonl")});
    QVERIFY(QFile::remove(path("touches.jsonl")));
}

/** It does not become a null one on the bus. */
void tst_ModuleProcess::emptyArray()
{
    QByteArray lines = "allow-warnings\n0 page 83\n";
    for (int i = 0; i < 20; ++i)
        lines += "signal parkingDistanceRear \"\"\nsignal parkingDistanceRear \"0101\"\n";
    compare({"--script", m_folder.write("empty.scenario", lines + "expect page 83\n")});
}

void tst_ModuleProcess::oneScenarioIsRecorded()
{
    const QString library = testpaths::source("bench/scenario/library");
    const ProgramResult result = runBench({"--script", library, "--record", path("all.jsonl")});
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.err.startsWith("--record: expected with one scenario, got "),
             qPrintable(result.err));
    QCOMPARE(result.err.count('\n'), 1);
}

/** A bench that is killed takes the module and the bus with it. */
void tst_ModuleProcess::nothingIsLeft()
{
    const QString place = path("tmp");
    QVERIFY(QDir().mkpath(place));
    qputenv("TMPDIR", place.toLocal8Bit());
    const QString command = QStringLiteral("%1 --headless --speed 1 --module-process --record "
                                           "%2/killed.jsonl & while ! test -s "
                                           "%2/killed.module.jsonl; do sleep 0.1; done; "
                                           "kill -9 $!")
                                .arg(testpaths::benchFile(), place);
    const ProgramResult result = runProgram({"sh", "-c", command});
    qunsetenv("TMPDIR");
    QCOMPARE(result.exitCode, 0);
    const auto processes = [&place] {
        int count = 0;
        QDirIterator ids("/proc", {"[0-9]*"}, QDir::Dirs);
        while (ids.hasNext()) {
            QFile commandLine(ids.next() + "/cmdline");
            count += int(commandLine.open(QIODevice::ReadOnly) &&
                         commandLine.readAll().contains(place.toLocal8Bit()));
        }
        return count;
    };
    QTRY_COMPARE(processes(), 0);
}

NORDA_TEST_MAIN(tst_ModuleProcess)
#include "tst_moduleprocess.moc"
