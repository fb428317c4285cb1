#include "program.h"
#include "recording.h"
#include "recordingtools.h"
#include "testmain.h"
#include "testpaths.h"

#include <sys/stat.h>

using namespace module;

static const QByteArray header("{\"format\":\"norda-recording\",\"title\":\"t\",\"version\":1}\n");

static QByteArray door(int ms, int code)
{
    return QStringLiteral("{\"args\":[%1],\"signal\":\"doorStatus\",\"t\":%2}\n")
        .arg(code)
        .arg(ms)
        .toLatin1();
}

static QByteArray battery(int ms)
{
    return QStringLiteral("{\"args\":[\"12.1V\"],\"signal\":\"batteryVoltage\",\"t\":%1}\n")
        .arg(ms)
        .toLatin1();
}

static QByteArray beep(int ms)
{
    return QStringLiteral("{\"args\":[],\"call\":\"Beep::play\",\"t\":%1}\n").arg(ms).toLatin1();
}

static QByteArray action(int ms, const char *word, const char *arguments = "[]")
{
    return QStringLiteral("{\"action\":\"%1\",\"args\":%2,\"t\":%3}\n")
        .arg(QLatin1String(word), QLatin1String(arguments))
        .arg(ms)
        .toLatin1();
}

static QByteArray end(int ms)
{
    return QStringLiteral("{\"end\":true,\"t\":%1}\n").arg(ms).toLatin1();
}

/** Comparing recordings and cutting them, as a person does it: with the bench as a program. */
class tst_RecordingTools : public QObject
{
    Q_OBJECT
private slots:
    void compare_data();
    void compare();
    void cut_data();
    void cut();
    void cutKeepsWhatWasDone();
    void cutOfALongOne();
    void interruptedRecording_data();
    void interruptedRecording();
    void unusable_data();
    void unusable();

private:
    QString path(const char *name) const { return m_folder.filePath(QLatin1String(name)); }
    void write(const char *name, const QByteArray &content) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    QByteArray read(const char *name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    ProgramResult run(const QStringList &arguments) const
    {
        return runProgram(QStringList(testpaths::benchFile()) + arguments);
    }

    QTemporaryDir m_folder;
};

void tst_RecordingTools::compare_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QStringList>("report"); // A and B stand for the files
    const QByteArray start = header + door(1000, 1) + battery(2500);
    QTest::newRow("identical") << start + end(3000) << start + end(3000) << 0
                               << QStringList{"identical: 3 lines, 3.000 s"};
    QTest::newRow("another title")
        << start << QByteArray(start).replace("\"title\":\"t\"", "\"title\":\"other\"") << 0
        << QStringList{"identical: 2 lines, 2.500 s"};
    QTest::newRow("another value")
        << start + door(2600, 1) << start + door(2600, 2) << 1
        << QStringList{"identical up to line 3 (2.500 s), first difference:",
                       "A: line 4: {\"args\":[1],\"signal\":\"doorStatus\",\"t\":2600}",
                       "B: line 4: {\"args\":[2],\"signal\":\"doorStatus\",\"t\":2600}"};
    QTest::newRow("another moment")
        << start + door(2600, 1) << start + door(2601, 1) << 1
        << QStringList{"identical up to line 3 (2.500 s), first difference:",
                       "A: line 4: {\"args\":[1],\"signal\":\"doorStatus\",\"t\":2600}",
                       "B: line 4: {\"args\":[1],\"signal\":\"doorStatus\",\"t\":2601}"};
    QTest::newRow("a call at another moment") << start + beep(2600) << start + beep(2640) << 0
                                              << QStringList{"identical: 3 lines, 2.600 s"};
    QTest::newRow("a call after another signal")
        << start + beep(2600) + door(2700, 1) << start + door(2700, 1) + beep(2700) << 1
        << QStringList{"identical up to line 3 (2.500 s), first difference:",
                       "A: line 4: {\"args\":[],\"call\":\"Beep::play\",\"t\":2600}",
                       "B: line 4: {\"args\":[1],\"signal\":\"doorStatus\",\"t\":2700}"};
    QTest::newRow("another action")
        << start + action(2600, "back") << start + action(2600, "split") << 1
        << QStringList{"identical up to line 3 (2.500 s), first difference:",
                       "A: line 4: {\"action\":\"back\",\"args\":[],\"t\":2600}",
                       "B: line 4: {\"action\":\"split\",\"args\":[],\"t\":2600}",
                       "back: 1 times and 0 times", "split: 0 times and 1 times"};
    QTest::newRow("one ends") << start + beep(2600) + beep(2700) << start << 1
                              << QStringList{
                                     "identical up to line 3 (2.500 s), first difference:",
                                     "A: line 4: {\"args\":[],\"call\":\"Beep::play\",\"t\":2600}",
                                     "B: ends after line 3", "Beep::play: 2 times and 0 times"};
    QTest::newRow("nothing in common")
        << header << start << 1
        << QStringList{
               "identical up to line 1 (0.000 s), first difference:", "A: ends after line 1",
               "B: line 2: {\"args\":[1],\"signal\":\"doorStatus\",\"t\":1000}",
               "batteryVoltage: 0 times and 1 times", "doorStatus: 0 times and 1 times"};
}

void tst_RecordingTools::compare()
{
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);
    QFETCH(int, exitCode);
    QFETCH(QStringList, report);
    write("a.jsonl", first);
    write("b.jsonl", second);
    const ProgramResult result = run({"--diff", path("a.jsonl"), path("b.jsonl")});
    QCOMPARE(result.exitCode, exitCode);
    report.replaceInStrings(QRegularExpression("^A:"), path("a.jsonl") + ":");
    report.replaceInStrings(QRegularExpression("^B:"), path("b.jsonl") + ":");
    QCOMPARE(result.out, report.join('\n') + '\n');
}

void tst_RecordingTools::cut_data()
{
    QTest::addColumn<QStringList>("range");
    QTest::addColumn<QByteArray>("part");
    QTest::newRow("whole") << QStringList{}
                           << door(1000, 1) + battery(2000) + door(3000, 2) + beep(3500) +
                                  door(4000, 3) + end(5000);
    QTest::newRow("catches up in order")
        << QStringList{"--from", "3.2"}
        << battery(0) + door(0, 2) + action(0, "begin") + beep(300) + door(800, 3) + end(1800);
    QTest::newRow("both ends belong to it")
        << QStringList{"--from", "3", "--to", "4"}
        << door(0, 1) + battery(0) + action(0, "begin") + door(0, 2) + beep(500) + door(1000, 3) +
               end(1000);
    QTest::newRow("up to a moment without a line")
        << QStringList{"--to", "2.5"} << door(1000, 1) + battery(2000) + end(2500);
    QTest::newRow("beyond the end") << QStringList{"--from", "4.5", "--to", "90"}
                                    << battery(0) + door(0, 3) + action(0, "begin") + end(500);
}

void tst_RecordingTools::cut()
{
    QFETCH(QStringList, range);
    QFETCH(QByteArray, part);
    write("a.jsonl", header + door(1000, 1) + battery(2000) + door(3000, 2) + beep(3500) +
                         door(4000, 3) + end(5000));
    const ProgramResult result =
        run(QStringList{"--cut", path("a.jsonl"), "--record", path("part.jsonl")} + range);
    QVERIFY2(result.exitCode == 0, qPrintable(result.err));
    QByteArray written = read("part.jsonl");
    QVERIFY(isRecordingHeader(written.left(written.indexOf('\n'))));
    QCOMPARE(written.mid(written.indexOf('\n') + 1), part);
    QString error;
    const auto source = RecordingSource::open(path("part.jsonl"), &error);
    QVERIFY2(source, qPrintable(error));
    QCOMPARE(source->statistics().value("badLines").toInt(), 0);
}

// What a touch did depends on what the page showed then, so a part begins with both, in order.
void tst_RecordingTools::cutKeepsWhatWasDone()
{
    write("a.jsonl", header + action(0, "page", "[80]") + beep(0) + door(1000, 1) + door(1500, 2) +
                         action(1600, "press", "[\"key_P1\",5,5]") + beep(1600) + battery(2000) +
                         action(3000, "back") + beep(3000) + end(4000));
    const QByteArray past = action(0, "page", "[80]") + door(0, 2) +
                            action(0, "press", "[\"key_P1\",5,5]") + battery(0);
    const auto cut = [this](const char *file, const char *from) {
        const ProgramResult result =
            run({"--cut", path(file), "--from", from, "--record", path("part.jsonl")});
        QVERIFY2(result.exitCode == 0, qPrintable(result.err));
    };
    cut("a.jsonl", "2.5");
    const QByteArray part = read("part.jsonl");
    QCOMPARE(part.mid(part.indexOf('\n') + 1),
             past + action(0, "begin") + action(500, "back") + beep(500) + end(1500));
    cut("part.jsonl", "0.1"); // a part of a part
    const QByteArray again = read("part.jsonl");
    QCOMPARE(again.mid(again.indexOf('\n') + 1),
             past + action(0, "begin") + action(400, "back") + beep(400) + end(1400));
}

// What a screen shows at a moment does not depend on where the recording begins.
void tst_RecordingTools::cutOfALongOne()
{
    static constexpr int hourMs = 3600 * 1000;
    QByteArray content = header;
    for (int ms = 0; ms < hourMs; ms += 20)
        content += door(ms, ms / 20 % 64);
    write("hour.jsonl", content + end(hourMs));
    QString error;
    QVERIFY2(cutRecording(path("hour.jsonl"), 1800 * 1000, 1810 * 1000, path("part.jsonl"), &error),
             qPrintable(error));
    const auto whole = RecordingSource::open(path("hour.jsonl"), &error);
    const auto part = RecordingSource::open(path("part.jsonl"), &error);
    QElapsedTimer clock;
    clock.start();
    whole->seek(1800 * 1000);
    QVERIFY2(clock.elapsed() < 1000, "a jump within an hour");
    for (int i = 0; i < 500; ++i) {
        if (i == 1)
            QCOMPARE(part->take().signal, QByteArray(beginAction));
        QCOMPARE(part->nextDueMs(), whole->nextDueMs() - 1800 * 1000);
        QCOMPARE(part->take().arguments, whole->take().arguments);
    }
}

void tst_RecordingTools::interruptedRecording_data()
{
    QTest::addColumn<QByteArray>("tail");
    QTest::newRow("after a line") << QByteArray();
    QTest::newRow("in a line") << QByteArray("{\"args\":[1],\"sig");
    QTest::newRow("blocks without content") << QByteArray(100000, '\0');
}

/** It ends with its last whole line. */
void tst_RecordingTools::interruptedRecording()
{
    QFETCH(QByteArray, tail);
    const QByteArray whole = header + door(1000, 1) + battery(2000);
    write("a.jsonl", whole + tail);
    write("b.jsonl", whole);
    QString error;
    QCOMPARE(RecordingSource::open(path("a.jsonl"), &error)->durationMs(), 2000);
    QVERIFY2(cutRecording(path("a.jsonl"), 0, 90000, path("part.jsonl"), &error),
             qPrintable(error));
    const QByteArray part = read("part.jsonl");
    QCOMPARE(part.mid(part.indexOf('\n') + 1), door(1000, 1) + battery(2000) + end(2000));
    QStringList report;
    QCOMPARE(compareRecordings(path("a.jsonl"), path("b.jsonl"), &report, &error),
             Comparison::Identical);
    QCOMPARE(error, QString());
}

void tst_RecordingTools::unusable_data()
{
    QTest::addColumn<QStringList>("arguments"); // GOOD, BAD and NONE stand for files
    QTest::addColumn<QString>("message");
    QTest::newRow("one file") << QStringList{"--diff", "GOOD"}
                              << "--diff: expected two recordings, got 1";
    QTest::newRow("three files") << QStringList{"--diff", "GOOD", "BAD", "GOOD"}
                                 << "--diff: expected two recordings, got 3";
    QTest::newRow("no such file") << QStringList{"--diff", "GOOD", "NONE"}
                                  << "NONE: expected a readable file: No such file or directory";
    QTest::newRow("damaged line")
        << QStringList{"--diff", "BAD", "GOOD"}
        << "BAD: line 3: expected a signal, a call, an action or the end, found "
           "'{\"t\":'";
    QTest::newRow("no recording")
        << QStringList{"--diff", "/etc/passwd", "GOOD"}
        << "/etc/passwd: line 1: expected the header of a recording, found '";
    QTest::newRow("no file to write")
        << QStringList{"--cut", "GOOD"} << "--cut: expected --record with the file for the part";
    QTest::newRow("ends before it begins")
        << QStringList{"--cut", "GOOD", "--from", "5", "--to", "4", "--record", "NONE"}
        << "--to: expected a number from 5 to 2592000, got '4'";
    QTest::newRow("after the end")
        << QStringList{"--cut", "GOOD", "--from", "5", "--record", "NONE"}
        << "GOOD: expected signals or calls from 5 s to 2592000 s, found none";
    QTest::newRow("damaged time")
        << QStringList{"--cut", "LATE", "--record", "NONE"}
        << "LATE: line 3: expected a time from 1000 ms to 2592000000 ms, found 1e+300";
    QTest::newRow("time goes back")
        << QStringList{"--diff", "GOOD", "BACK"}
        << "BACK: line 3: expected a time from 1000 ms to 2592000000 ms, found 999";
    QTest::newRow("part to a pipe") << QStringList{"--cut", "GOOD", "--record", "PIPE"}
                                    << "PIPE: expected a regular file, found a pipe";
    QTest::newRow("part to a device") << QStringList{"--cut", "GOOD", "--record", "/dev/full"}
                                      << "/dev/full: expected a regular file, found a device";
    QTest::newRow("damaged after the start")
        << QStringList{"--cut", "BAD", "--record", "NONE"}
        << "BAD: line 3: expected a signal, a call, an action or the end, found '{\"t\":'";
}

void tst_RecordingTools::unusable()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    write("good.jsonl", header + door(1000, 1) + end(2000));
    write("bad.jsonl", header + door(1000, 1) + "{\"t\":\n");
    write("late.jsonl", header + door(1000, 1) + "{\"signal\":\"x\",\"args\":[],\"t\":1e300}\n");
    write("back.jsonl", header + door(1000, 1) + end(999));
    mkfifo(QFile::encodeName(path("pipe")).constData(), 0600);
    const auto named = [this](QString text) {
        return text.replace("GOOD", path("good.jsonl"))
            .replace("LATE", path("late.jsonl"))
            .replace("BACK", path("back.jsonl"))
            .replace("PIPE", path("pipe"))
            .replace("BAD", path("bad.jsonl"))
            .replace("NONE", path("none.jsonl"));
    };
    for (QString &argument : arguments)
        argument = named(argument);
    const ProgramResult result = run(arguments);
    QCOMPARE(result.exitCode, 2);
    const QStringList lines = result.err.split('\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].startsWith(named(message)), qPrintable(result.err));
    QVERIFY(!QFile::exists(path("none.jsonl"))); // nothing half-written
}

NORDA_TEST_MAIN(tst_RecordingTools)
#include "tst_recordingtools.moc"
