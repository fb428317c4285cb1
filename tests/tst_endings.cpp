#include "program.h"
#include "recording.h"
#include "testmain.h"
#include "testpaths.h"

#include <QJsonDocument>
#include <QJsonObject>

/** How a run of the bench ends, and that none of its results replaces what it reads. */
class tst_Endings : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void resultsReplaceNoInput_data();
    void resultsReplaceNoInput();
    void resultsReplaceOldOnes();
    void picturesReplaceNoInput();
    void failedRecordingEndsTheRun();
    void signalsEndInOrder_data();
    void signalsEndInOrder();
    void signalEndsAMessage();
    void secondSignalEndsAtOnce();
    void signalDuringTheGallery();
    void brokenPipeIsNoEnd();
    void interruptedScenarioLeavesNothing();
    void closedStandardStreams_data();
    void closedStandardStreams();

private:
    /** A shell command in the test's folder; $B is the bench. */
    ProgramResult shell(const QString &command) const
    {
        return runProgram({"env", "B=" + testpaths::benchFile(), "TMPDIR=" + path("tmp"), "sh",
                           "-c", QStringLiteral("cd '%1'; ").arg(m_folder.path()) + command});
    }
    QString path(const QString &name) const { return m_folder.filePath(name); }
    QByteArray content(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void put(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir m_folder;
};

static const QByteArray drive = "{\"format\":\"norda-recording\",\"version\":1}\n"
                                "{\"t\":1,\"signal\":\"doorStatus\",\"args\":[1]}\n"
                                "{\"t\":3000,\"end\":true}\n";
static const QByteArray scenario = "0 expect page 80\n";
// Until it is in the drive, a signal may come too early.
static const QString untilRecorded = QStringLiteral(
    "for i in $(seq 300); do grep -qs doorStatus r.jsonl && break; sleep 0.05; done; ");

void tst_Endings::init()
{
    QDir(m_folder.path()).removeRecursively();
    for (const char *name : {"tmp", "run"})
        QVERIFY(QDir().mkpath(path(name)));
    QVERIFY(
        QFile::setPermissions(path("run"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    put("own.jsonl", drive);
    put("own.scenario", scenario);
    for (const char *name : {"own.dbc", "own.json"})
        put(name, drive);
    QVERIFY(QFile::link(path("own.jsonl"), path("link.jsonl")));
    for (const char *name : {"r.1.jsonl", "report.html"})
        QVERIFY(QFile::copy(path("own.jsonl"), path(name)));
}

void tst_Endings::resultsReplaceNoInput_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("message");
    const QString isRead = ": expected a file that is not read at the same time\n";
    const QString isWritten = ": expected another file than --record, got ";
    QTest::newRow("recording") << "--source own.jsonl --record own.jsonl"
                               << "own.jsonl" + isRead;
    QTest::newRow("by a link") << "--source link.jsonl --record own.jsonl"
                               << "own.jsonl" + isRead;
    QTest::newRow("to a link") << "--source own.jsonl --record link.jsonl"
                               << "link.jsonl" + isRead;
    QTest::newRow("other path") << "--source own.jsonl --record tmp/../own.jsonl" << isRead;
    QTest::newRow("summary") << "--source own.jsonl --summary own.jsonl"
                             << "own.jsonl" + isRead;
    QTest::newRow("JUnit") << "--script own.scenario --junit own.scenario"
                           << "own.scenario" + isRead;
    QTest::newRow("JUnit, a folder of scenarios") << "--script . --junit own.scenario"
                                                  << "own.scenario" + isRead;
    QTest::newRow("part of a recording") << "--source r.1.jsonl --record r.jsonl --record-limit 1"
                                         << "r.1.jsonl" + isRead;
    const QString car = "--source own.log --dbc own.dbc --map own.json ";
    QTest::newRow("DBC file") << car + "--record own.dbc"
                              << "own.dbc" + isRead;
    QTest::newRow("map") << car + "--summary own.json"
                         << "own.json" + isRead;
    QTest::newRow("report") << "--source report.html --report ."
                            << "report.html" + isRead;
    QTest::newRow("two results") << "--record new --summary new"
                                 << "--summary" + isWritten + "'new'";
    QTest::newRow("two results, one path") << "--record new --summary tmp/../new"
                                           << "--summary" + isWritten + "'tmp/../new'";
}

void tst_Endings::resultsReplaceNoInput()
{
    QFETCH(QString, options);
    QFETCH(QString, message);
    const ProgramResult result = shell("$B --headless --duration 1 " + options);
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.err.contains(message), qPrintable(result.err));
    QCOMPARE(result.err.count('\n'), 1);
    QCOMPARE(content("own.jsonl"), drive);
    QCOMPARE(content("r.1.jsonl"), drive);
    QCOMPARE(content("own.scenario"), scenario);
    QCOMPARE(content("own.dbc") + content("own.json"), drive + drive);
}

/** Results of an earlier run are no inputs. */
void tst_Endings::resultsReplaceOldOnes()
{
    for (int i = 0; i < 2; ++i) {
        const ProgramResult result =
            shell("$B --headless --duration 1 --record new --summary s.json "
                  "&& $B --script own.scenario --junit own.xml");
        QVERIFY2(result.exitCode == 0, qPrintable(result.err));
    }
}

void tst_Endings::picturesReplaceNoInput()
{
    QVERIFY(QFile::rename(path("own.jsonl"), path("80-gauges.png")));
    const ProgramResult result = shell("$B --headless --source 80-gauges.png --gallery .");
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.err.contains("80-gauges.png: expected a file that is not read"),
             qPrintable(result.err));
    QCOMPARE(content("80-gauges.png"), drive);
}

/** A limit on the size of files is a disk that is full. */
void tst_Endings::failedRecordingEndsTheRun()
{
    const ProgramResult result =
        shell("ulimit -f 16; $B --headless --duration 3600 --record full.jsonl --summary s.json");
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.err.count("the recording ends at"), 1);
    const QJsonObject summary = QJsonDocument::fromJson(content("s.json")).object();
    QVERIFY(summary.value("driveSeconds").toDouble() > 0);
    QVERIFY(summary.value("driveSeconds").toDouble() < 3600);
    QString error;
    const auto source = module::RecordingSource::open(path("full.jsonl"), &error);
    QVERIFY2(source, qPrintable(error));
    QCOMPARE(source->statistics().value("badLines").toInt(), 0);
}

void tst_Endings::signalsEndInOrder_data()
{
    QTest::addColumn<QString>("signalName");
    QTest::addColumn<QString>("options");
    for (const char *name : {"INT", "TERM", "HUP"}) {
        QTest::addRow("%s, headless", name) << name << "--headless";
        QTest::addRow("%s, window", name) << name << "--platform offscreen";
    }
}

void tst_Endings::signalsEndInOrder()
{
    QFETCH(QString, signalName);
    QFETCH(QString, options);
    // A shell in the background would have INT ignored; env gives it back.
    const ProgramResult result =
        shell("env --default-signal $B " + options +
              " --speed 1 --source simulator --record r.jsonl --summary s.json & " + untilRecorded +
              "kill -" + signalName + " $!; wait $!");
    QVERIFY2(result.exitCode == 0, qPrintable(result.err));
    QVERIFY(content("r.jsonl").contains("\"end\":true"));
    QVERIFY(!QJsonDocument::fromJson(content("s.json")).isEmpty());
    QVERIFY2(result.out.contains(" s simulated in "), qPrintable(result.out));
}

/** The one that offers to try again, before there is a window. */
void tst_Endings::signalEndsAMessage()
{
    const ProgramResult result =
        shell("env --default-signal $B --platform offscreen --source elm327:/dev/null & "
              "for i in $(seq 600); do grep -q 'SigCgt:.*[4-7c-f]...$' /proc/$!/status && break; "
              "sleep 0.05; done; sleep 1; kill -TERM $!; wait $!");
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.err.contains("elm327:/dev/null: expected a serial port"),
             qPrintable(result.err));
}

void tst_Endings::secondSignalEndsAtOnce()
{
    const ProgramResult result =
        shell("env --default-signal $B --headless --speed 1 --source simulator --record r.jsonl "
              "--gallery g & " +
              untilRecorded +
              "kill -TERM $!; for i in $(seq 300); do ls g/*.png >tmp/l 2>&1 && break; sleep 0.02; "
              "done; kill -INT $!; wait $!");
    QCOMPARE(result.exitCode, 128 + SIGINT);
    QVERIFY(content("r.jsonl").contains("\"end\":true"));
    QVERIFY(!QFile::exists(path("g/audio-stage.png")));
}

/** Once the run has begun to end, no step is repeated. */
void tst_Endings::signalDuringTheGallery()
{
    const ProgramResult result =
        shell("env --default-signal $B --headless --duration 1 --gallery g & "
              "for i in $(seq 300); do ls g/*.png >tmp/l 2>&1 && break; sleep 0.02; done; "
              "kill -TERM $!; wait $!");
    QVERIFY2(result.exitCode == 0, qPrintable(result.err));
    QCOMPARE(result.out.count(" pictures in g"), 1);
    QCOMPARE(result.out.count(" s simulated in "), 1);
    QVERIFY(QFile::exists(path("g/audio-stage.png")));
}

void tst_Endings::brokenPipeIsNoEnd()
{
    const ProgramResult result =
        shell("{ sleep 0.2; $B --headless --duration 1 --summary s.json; echo $? >code; } | true");
    QVERIFY2(result.exitCode == 0, qPrintable(result.err));
    QCOMPARE(content("code"), QByteArray("0\n"));
    QVERIFY(!content("s.json").isEmpty());
}

/** Neither a process nor a folder; but what was played is reported. */
void tst_Endings::interruptedScenarioLeavesNothing()
{
    put("first.scenario", "0 expect page 80\n");
    put("long.scenario", "0 picture begun\nwait 10\nexpect page 80\n");
    const ProgramResult result =
        shell("env --default-signal XDG_RUNTIME_DIR=$PWD/run $B --script first.scenario --script "
              "long.scenario "
              "--junit j.xml --report r --gallery g & "
              "for i in $(seq 300); do ls g/*.png >l 2>&1 && break; sleep 0.05; done; "
              "kill -TERM $!; wait $!; code=$?; sleep 0.2; ls tmp; "
              "for p in /proc/[0-9]*; do [ \"$(readlink $p/cwd)\" = \"$PWD\" ] && "
              "[ \"$(readlink $p/exe)\" = \"$(readlink -f $B)\" ] && echo $p; done; "
              "exit $code");
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.err, QStringLiteral("long.scenario: expected an end of its own, it was "
                                        "interrupted\n"));
    const QStringList lines = result.out.split('\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY2(lines[0].contains("first.scenario"), qPrintable(lines[0]));
    QCOMPARE(lines[1], QStringLiteral("1 passed, 1 failed"));
    for (const char *file : {"j.xml", "r/report.html"}) {
        const QByteArray report = content(file);
        QVERIFY(report.contains("first"));
        QVERIFY(report.contains("it was interrupted"));
    }
}

void tst_Endings::closedStandardStreams_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("closed");
    QTest::addColumn<QByteArray>("lastLines");
    // The results of the scenario come through a pipe, signals through another.
    for (const char *closed : {"<&- >&- 2>&-", ">&- 2>&-"}) {
        QTest::addRow("scenario, %s", closed) << "--script own.scenario --trace --junit out"
                                              << closed << QByteArray("</testsuite>\n");
        QTest::addRow("recording, %s", closed)
            << "--headless --duration 50 --record out --trace" << closed
            << QByteArray("{\"end\":true,\"t\":50000}\n");
    }
}

/** What the program prints lands in no file and no pipe. */
void tst_Endings::closedStandardStreams()
{
    QFETCH(QString, options);
    QFETCH(QString, closed);
    QFETCH(QByteArray, lastLines);
    QCOMPARE(shell("$B " + options + ' ' + closed).exitCode, 0);
    QVERIFY2(content("out").endsWith(lastLines), content("out").right(200));
    for (const QByteArray &line : content("out").split('\n'))
        QVERIFY2(line.isEmpty() || line.startsWith('{') || line.trimmed().startsWith('<'), line);
}

NORDA_TEST_MAIN(tst_Endings)
#include "tst_endings.moc"
